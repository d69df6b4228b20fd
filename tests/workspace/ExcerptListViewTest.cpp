#include "workspace/lists/ExcerptListView.h"

#include "support/TestLibrary.h"
#include "workspace/controls/ElidedLabel.h"
#include "workspace/controls/Paragraph.h"
#include "workspace/lists/RowList.h"
#include "workspace/theme/ThemeColors.h"
#include "workspace/theme/ThemedTest.h"

#include <QHoverEvent>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextEdit>

using namespace Qt::StringLiterals;

namespace {

/// The real view over the real store, with two codes and a document of some words.
class ExcerptList : public ThemedTest {
protected:
    ExcerptList()
    {
        library.makeCodes({u"Trust"_s, u"Doubt"_s});
        notes = library.paste(u"Notes"_s, u"one two three four five six seven"_s);
        other = library.paste(u"Other"_s, u"another text altogether"_s);
    }
    ~ExcerptList() override { delete view; } // before the store
    void open(const QString &code)
    {
        view = new ExcerptListView(library.store, &m_window);
        view->resize(285, 500);
        view->setCodeID(library.code(code).id);
        showWindow();
        QApplication::processEvents();
    }
    void assign(const QString &code, const Document &document, qint64 start, qint64 length)
    {
        library.store.assignCode(library.code(code), document, {start, length});
    }
    [[nodiscard]] RowList &list() const { return *view->findChild<RowList *>(u"excerptList"_s); }
    [[nodiscard]] QTextEdit &memo() const { return *view->findChild<QTextEdit *>(u"memo"_s); }
    [[nodiscard]] bool showsPage(const QString &name) const { return view->findChild<QWidget *>(name)->isVisible(); }
    [[nodiscard]] QModelIndex row(int number) const { return list().model()->index(number, 0); }
    [[nodiscard]] QStringList snippets() const
    {
        QStringList snippets;
        for (int number = 0; number < list().model()->rowCount(); ++number)
            snippets.append(row(number).data().toString());
        return snippets;
    }
    void openMemo() const
    {
        for (auto *button : view->findChildren<QPushButton *>()) {
            if (button->text() == u"Code memo…"_s)
                QTest::mouseClick(button, Qt::LeftButton);
        }
    }
    [[nodiscard]] QString storedMemo(const QString &name) const
    {
        for (const Code &code : library.storedCodes()) {
            if (code.name == name)
                return code.memo.value_or(u"(none)"_s);
        }
        return u"(no code)"_s;
    }
    void hover(int number) const
    {
        const QPointF place = list().visualRect(row(number)).center();
        QHoverEvent event(QEvent::HoverMove, place, list().viewport()->mapToGlobal(place), place);
        QApplication::sendEvent(list().viewport(), &event);
    }
    /// Whether the line above that row can be seen.
    [[nodiscard]] bool hasLineAbove(int number) const
    {
        const QImage picture = list().viewport()->grab().toImage();
        const QRect rect = list().visualRect(row(number));
        const QColor pixel = picture.pixelColor(rect.center().x(), rect.top() + 1);
        return pixel != Theme::colors().content;
    }

    TestLibrary library;
    Document notes;
    Document other;
    ExcerptListView *view = nullptr;
};

} // namespace

TEST_F(ExcerptList, AClickAndReturnOpenThePassageInItsDocument)
{
    assign(u"Trust"_s, notes, 4, 3);
    assign(u"Trust"_s, other, 0, 7);
    open(u"Trust"_s);
    EXPECT_EQ(snippets(), (QStringList{u"two"_s, u"another"_s}));
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().visualRect(row(0)).center());
    EXPECT_EQ(library.store.selectedDocumentID().get(), notes.id);
    ASSERT_TRUE(library.store.revealRequest().get().has_value());
    EXPECT_EQ(library.store.revealRequest()->value().range, (TextRange{4, 3}));
    const auto token = library.store.revealRequest()->value().token;

    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_EQ(library.store.revealRequest()->value().token, token); // moving isn't acting
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(library.store.selectedDocumentID().get(), other.id);
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_EQ(library.store.revealRequest()->value().token, token + 2);
}

TEST_F(ExcerptList, FollowsTheStoreButNotWhatItDoesNotShow)
{
    assign(u"Trust"_s, notes, 0, 3);
    open(u"Trust"_s);
    const QSignalSpy resets(list().model(), &QAbstractItemModel::modelReset);
    library.store.setDocumentMemo(library.document(u"Notes"_s), u"memo"_s);
    library.store.setCodeMemo(library.code(u"Doubt"_s), u"memo"_s);
    assign(u"Doubt"_s, notes, 0, 3);
    EXPECT_EQ(resets.size(), 0);
    assign(u"Trust"_s, notes, 4, 3);
    EXPECT_EQ(snippets(), (QStringList{u"one"_s, u"two"_s}));
    library.store.renameDocument(library.document(u"Notes"_s), u"Renamed"_s);
    EXPECT_EQ(row(0).data(Qt::AccessibleTextRole).toString(), u"one, Renamed"_s);
    library.store.renameCode(library.code(u"Trust"_s), u"Faith"_s);
    EXPECT_EQ(view->findChild<ElidedLabel *>()->text(), u"Faith"_s);
    EXPECT_EQ(list().accessibleName(), u"Excerpts"_s);
}

TEST_F(ExcerptList, AHiddenViewAsksForNothingUntilItIsShown)
{
    open(u"Trust"_s);
    m_window.hide();
    assign(u"Trust"_s, notes, 0, 3);
    EXPECT_EQ(snippets(), QStringList());
    m_window.show();
    EXPECT_EQ(snippets(), QStringList{u"one"_s});
}

TEST_F(ExcerptList, WithoutPassagesItSaysHowToGetThem)
{
    library.makeCodes({u"50%1 “so”"_s});
    open(u"50%1 “so”"_s);
    EXPECT_TRUE(showsPage(u"noExcerpts"_s));
    QStringList texts;
    for (const auto *paragraph : view->findChild<QWidget *>(u"noExcerpts"_s)->findChildren<Paragraph *>())
        texts.append(paragraph->accessibleName());
    EXPECT_EQ(texts,
        (QStringList{
            u"No Excerpts Yet"_s, u"Select text in a document and add “50%1 “so””\nto see its excerpts here."_s}));
    assign(u"50%1 “so”"_s, notes, 0, 3);
    EXPECT_TRUE(list().isVisible());
    EXPECT_FALSE(showsPage(u"noExcerpts"_s));
}

TEST_F(ExcerptList, ACodeThatIsGoneIsNotFound)
{
    assign(u"Trust"_s, notes, 0, 3);
    open(u"Trust"_s);
    openMemo();
    QTest::keyClicks(&memo(), u"a"_s);
    library.store.deleteCode(library.code(u"Trust"_s));
    EXPECT_TRUE(showsPage(u"codeNotFound"_s));
    EXPECT_FALSE(list().isVisible());
    EXPECT_EQ(view->findChild<ElidedLabel *>()->text(), QString());
    EXPECT_EQ(storedMemo(u"Trust"_s), u"(no code)"_s); // the memo's last commit doesn't bring it back
    EXPECT_EQ(storedMemo(u"Doubt"_s), u"(none)"_s);
    view->setCodeID(library.code(u"Doubt"_s).id);
    EXPECT_FALSE(showsPage(u"codeNotFound"_s));
}

TEST_F(ExcerptList, TheMemoIsSavedWithEachKeystroke)
{
    open(u"Trust"_s);
    openMemo();
    QTest::keyClicks(&memo(), u" "_s);
    EXPECT_EQ(storedMemo(u"Trust"_s), u" "_s); // no content for the bar, but saved
    QTest::keyClicks(&memo(), u"ab"_s);
    EXPECT_EQ(storedMemo(u"Trust"_s), u" ab"_s);
    EXPECT_EQ(storedMemo(u"Doubt"_s), u"(none)"_s);
}

TEST_F(ExcerptList, SwitchingShowsTheOtherMemoAndSavesNothing)
{
    library.store.setCodeMemo(library.code(u"Doubt"_s), u"about doubt"_s);
    open(u"Trust"_s);
    openMemo();
    QTest::keyClicks(&memo(), u"about trust"_s);
    const ChangeCounter changes(library.store.codes());
    view->setCodeID(library.code(u"Doubt"_s).id);
    EXPECT_EQ(memo().toPlainText(), u"about doubt"_s);
    EXPECT_EQ(changes.count(), 0);
    QTest::keyClick(&memo(), Qt::Key_Z, Qt::ControlModifier);
    memo().moveCursor(QTextCursor::End);
    QTest::keyClicks(&memo(), u"!"_s);
    view->setCodeID(library.code(u"Trust"_s).id);
    m_window.hide(); // the bar's last commit
    EXPECT_EQ(storedMemo(u"Trust"_s), u"about trust"_s);
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

TEST_F(ExcerptList, TheBackButtonLeadsToTheDocumentsAndTabToMemoAndList)
{
    assign(u"Trust"_s, notes, 0, 3);
    library.store.setCodeMemo(library.code(u"Trust"_s), u"memo"_s);
    library.store.sidebarSelection().set(CodeSelection{library.code(u"Trust"_s).id});
    open(u"Trust"_s);
    auto *back = view->findChild<QPushButton *>(u"allDocuments"_s);
    EXPECT_EQ(back->text(), u"All Documents"_s);
    back->setFocus();
    QTest::keyClick(back, Qt::Key_Tab);
    EXPECT_TRUE(memo().hasFocus());
    QTest::keyClick(&memo(), Qt::Key_Tab);
    EXPECT_TRUE(list().hasFocus());
    QTest::mouseClick(back, Qt::LeftButton);
    EXPECT_EQ(library.store.selectedCodeID(), std::nullopt);
}

TEST_F(ExcerptList, LinesStandBetweenRowsButNotBesideTheHoveredOne)
{
    for (const qint64 start : {0, 4, 8})
        assign(u"Trust"_s, notes, start, 3);
    open(u"Trust"_s);
    EXPECT_FALSE(hasLineAbove(0));
    EXPECT_TRUE(hasLineAbove(1));
    EXPECT_TRUE(hasLineAbove(2));
    hover(1);
    EXPECT_FALSE(hasLineAbove(1));
    EXPECT_FALSE(hasLineAbove(2));
    hover(0);
    EXPECT_FALSE(hasLineAbove(1));
    EXPECT_TRUE(hasLineAbove(2));
}

TEST_F(ExcerptList, AnotherCodesListBeginsAtItsTop)
{
    const Document long1 = library.paste(u"Long"_s, u"word "_s.repeated(200));
    for (int word = 0; word < 60; ++word) {
        assign(u"Trust"_s, long1, word * 5, 4);
        assign(u"Doubt"_s, long1, word * 5, 4);
    }
    open(u"Trust"_s);
    list().scrollToBottom();
    const QRect last = list().visualRect(row(59));
    ASSERT_TRUE(list().viewport()->rect().contains(last));
    assign(u"Trust"_s, long1, 500, 4);
    EXPECT_EQ(list().visualRect(row(59)), last); // a passage more leaves what is in view where it is
    view->setCodeID(library.code(u"Doubt"_s).id);
    EXPECT_EQ(list().visualRect(row(0)).top(), 0);
}
