#include "workspace/lists/ExcerptListView.h"

#include "ShownView.h"
#include "kit/controls/ElidedLabel.h"

#include <QSignalSpy>
#include <QTextEdit>

using namespace Qt::StringLiterals;

namespace {

/// With two codes and a document of some words.
class ExcerptList : public ShownView<ExcerptListView> {
protected:
    ExcerptList()
    {
        library.makeCodes({u"Trust"_s, u"Doubt"_s});
        notes = library.paste(u"Notes"_s, u"one two three four five six seven"_s);
        other = library.paste(u"Other"_s, u"another text altogether"_s);
    }
    void open(const QString &code)
    {
        ShownView::open();
        view->setCodeID(library.code(code).id);
        QApplication::processEvents();
    }
    void assign(const QString &code, const Document &document, qint64 start, qint64 length)
    {
        library.store.assignCode(library.code(code), document, {start, length});
    }
    [[nodiscard]] RowList &list() const { return find<RowList>(u"excerptList"_s); }
    [[nodiscard]] QTextEdit &memo() const { return find<QTextEdit>(u"memo"_s); }
    [[nodiscard]] QStringList snippets() const { return textsOf(list()); }
    void openMemo() const { pressButton(u"Code memo…"_s); }
    [[nodiscard]] QString storedMemo(const QString &name) const
    {
        for (const Code &code : library.storedCodes()) {
            if (code.name == name)
                return code.memo.value_or(u"(none)"_s);
        }
        return u"(no code)"_s;
    }

    Document notes;
    Document other;
};

} // namespace

TEST_F(ExcerptList, AClickAndReturnOpenThePassageInItsDocument)
{
    assign(u"Trust"_s, notes, 4, 3);
    assign(u"Trust"_s, other, 0, 7);
    open(u"Trust"_s);
    EXPECT_EQ(snippets(), (QStringList{u"two"_s, u"another"_s}));
    click(list(), 0);
    EXPECT_EQ(library.store.selectedDocumentID().get(), notes.id);
    ASSERT_EQ(revealedRange(), (TextRange{4, 3}));
    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_EQ(library.store.selectedDocumentID().get(), notes.id); // moving isn't acting
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
        const auto token = library.store.revealRequest()->value().token;
        QTest::keyClick(&list(), key);
        EXPECT_EQ(library.store.selectedDocumentID().get(), other.id);
        EXPECT_EQ(library.store.revealRequest()->value().token, token + 1);
    }
}

TEST_F(ExcerptList, FollowsTheStoreButNotWhatItDoesNotShow)
{
    assign(u"Trust"_s, notes, 0, 3);
    open(u"Trust"_s);
    const QSignalSpy resets(list().model(), &QAbstractItemModel::modelReset);
    library.store.setDocumentMemo(library.document(u"Notes"_s), u"memo"_s);
    assign(u"Doubt"_s, notes, 0, 3);
    EXPECT_EQ(resets.size(), 0);
    assign(u"Trust"_s, notes, 4, 3);
    EXPECT_EQ(snippets(), (QStringList{u"one"_s, u"two"_s}));
    library.store.renameDocument(library.document(u"Notes"_s), u"Renamed"_s);
    EXPECT_EQ(spoken(list(), 0), u"one, Renamed"_s);
    library.store.renameCode(library.code(u"Trust"_s), u"Faith"_s);
    EXPECT_EQ(find<ElidedLabel>({}).text(), u"Faith"_s);
}

TEST_F(ExcerptList, WithoutPassagesItSaysHowToGetThem)
{
    library.makeCodes({u"50%1 “so”"_s});
    open(u"50%1 “so”"_s);
    EXPECT_TRUE(showsPage(u"noExcerpts"_s));
    EXPECT_TRUE(textsOf(u"noExcerpts"_s).last().contains(u"add “50%1 “so””\n"));
    assign(u"50%1 “so”"_s, notes, 0, 3);
    EXPECT_FALSE(showsPage(u"noExcerpts"_s));
}

TEST_F(ExcerptList, ACodeThatIsGoneIsNotFound)
{
    open(u"Trust"_s);
    openMemo();
    QTest::keyClicks(&memo(), u"a"_s);
    library.store.deleteCode(library.code(u"Trust"_s));
    EXPECT_TRUE(showsPage(u"codeNotFound"_s));
    EXPECT_EQ(find<ElidedLabel>({}).text(), QString());
    EXPECT_EQ(storedMemo(u"Trust"_s), u"(no code)"_s); // the memo's last commit doesn't bring it back
    EXPECT_EQ(storedMemo(u"Doubt"_s), u"(none)"_s);
    view->setCodeID(library.code(u"Doubt"_s).id);
    EXPECT_FALSE(showsPage(u"codeNotFound"_s));
}

TEST_F(ExcerptList, SwitchingShowsTheOtherMemoAndSavesNothing)
{
    library.store.setCodeMemo(library.code(u"Doubt"_s), u"about doubt"_s);
    open(u"Trust"_s);
    openMemo();
    QTest::keyClicks(&memo(), u" "_s);
    EXPECT_EQ(storedMemo(u"Trust"_s), u" "_s); // no content for the bar, but saved
    QTest::keyClicks(&memo(), u"about trust"_s);
    const ChangeCounter changes(library.store.codes());
    view->setCodeID(library.code(u"Doubt"_s).id);
    EXPECT_EQ(memo().toPlainText(), u"about doubt"_s);
    EXPECT_EQ(changes.count(), 0);
    memo().moveCursor(QTextCursor::End);
    QTest::keyClicks(&memo(), u"!"_s);
    view->setCodeID(library.code(u"Trust"_s).id);
    m_window.hide(); // the bar's last commit
    EXPECT_EQ(storedMemo(u"Trust"_s), u" about trust"_s);
    EXPECT_EQ(storedMemo(u"Doubt"_s), u"about doubt!"_s);
}

TEST_F(ExcerptList, ACodeThatComesLaterBringsItsMemo)
{
    open(u"Trust"_s);
    const Code faraway = library.code(u"Doubt"_s);
    library.store.setCodeMemo(faraway, u"about doubt"_s);
    const QUuid home = library.store.project()->value().id;
    library.store.createProject(u"Elsewhere"_s);
    view->setCodeID(faraway.id);
    EXPECT_TRUE(showsPage(u"codeNotFound"_s));
    library.store.selectProject(home);
    EXPECT_FALSE(showsPage(u"codeNotFound"_s));
    EXPECT_EQ(memo().toPlainText(), u"about doubt"_s);
    EXPECT_EQ(storedMemo(u"Doubt"_s), u"about doubt"_s);
}

TEST_F(ExcerptList, AnotherCodesListBeginsAtItsTop)
{
    const Document many = library.paste(u"Long"_s, u"word "_s.repeated(200));
    for (const QString &code : {u"Trust"_s, u"Doubt"_s}) {
        for (int word = 0; word < 60; ++word)
            assign(code, many, word * 5, 4);
    }
    open(u"Trust"_s);
    list().scrollToBottom();
    const QRect last = list().visualRect(row(list(), 59));
    ASSERT_TRUE(list().viewport()->rect().contains(last));
    assign(u"Trust"_s, many, 500, 4);
    EXPECT_EQ(list().visualRect(row(list(), 59)), last); // a passage more leaves what is in view where it is
    view->setCodeID(library.code(u"Doubt"_s).id);
    EXPECT_EQ(list().visualRect(row(list(), 0)).top(), 0);
}
