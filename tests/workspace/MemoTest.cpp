#include "ShownWindow.h"
#include "kit/controls/Alert.h"
#include "workspace/lists/ExcerptListView.h"
#include "workspace/lists/MemoBar.h"
#include "workspace/reader/ReaderView.h"

#include <QInputMethodEvent>
#include <QTextEdit>

using namespace Qt::StringLiterals;

// A memo belongs to the document or code it was typed for, and the editor shows what is stored.

namespace {

/// The memos of two documents or of two codes, "One" and "Other", the first of which is shown.
class Memos : public ShownWindow, public testing::WithParamInterface<bool> {
protected:
    Memos()
    {
        library.makeCodes({u"One"_s, u"Other"_s});
        for (const QString &title : {u"One"_s, u"Other"_s})
            library.paste(title, u"some text"_s);
        show(u"One"_s);
        open();
        QWidget &column = areOfCodes ? static_cast<QWidget &>(find<ExcerptListView>()) : find<ReaderView>();
        auto &bar = childOf<MemoBar>(&column, {});
        button = &childOf<QPushButton>(&bar, {});
        editor = &childOf<QTextEdit>(&bar, {});
        if (button->isVisible())
            QTest::mouseClick(button, Qt::LeftButton);
    }
    void show(const QString &name)
    {
        if (areOfCodes)
            store.sidebarSelection().set(CodeSelection{library.code(name).id});
        else
            store.selectedDocumentID().set(library.document(name).id);
        QApplication::processEvents();
    }
    void write(const QString &name, const QString &memo)
    {
        if (areOfCodes)
            store.setCodeMemo(library.code(name), memo);
        else
            store.setDocumentMemo(library.document(name), memo);
    }
    [[nodiscard]] QString stored(const QString &name) const
    {
        return (areOfCodes ? library.code(name).memo : library.document(name).memo).value_or(QString());
    }
    /// As an input method does: what is composed isn't part of the text yet.
    void input(const QString &composed, const QString &committed) const
    {
        QInputMethodEvent event(composed, {});
        event.setCommitString(committed);
        QApplication::sendEvent(editor, &event);
    }
    [[nodiscard]] QString shown() const
    {
        return editor->document()->toRawText().replace(QChar::ParagraphSeparator, u'\n');
    }
    /// From now on no write succeeds, until the second time.
    void toggleWrites() const
    {
        library.queue->writeWithoutTransaction([](Database &database) {
            const bool fails = database.integer("PRAGMA max_page_count") < 100'000;
            database.execute(fails ? "PRAGMA max_page_count = 1000000" : "PRAGMA max_page_count = 1");
        });
    }

    const bool areOfCodes = GetParam();
    LibraryStore &store = library.store;
    QPushButton *button = nullptr;
    QTextEdit *editor = nullptr;
};

INSTANTIATE_TEST_SUITE_P(
    , Memos, testing::Bool(), [](const auto &row) { return std::string(row.param ? "of_codes" : "of_documents"); });

} // namespace

TEST_P(Memos, AreStoredAsTheyAreShown)
{
    for (const auto &[typed, expected] : {std::pair(u" "_s, u" "_s), {u"a"_s, u" a"_s}}) {
        type(typed);
        EXPECT_EQ(stored(u"One"_s), expected) << "each keystroke";
    }
    press(Qt::Key_Return, Qt::ShiftModifier);
    input({}, u"b\u2028c"_s + QChar(0xD800) + u'd');
    EXPECT_EQ(stored(u"One"_s), u" a\nb\nc\uFFFDd"_s);
    EXPECT_EQ(shown(), stored(u"One"_s));
    press(Qt::Key_Return);
    press(Qt::Key_Left, Qt::ShiftModifier);
    press(Qt::Key_Return, Qt::ShiftModifier); // over a line break of the other kind
    EXPECT_EQ(shown(), u" a\nb\nc\uFFFDd\n"_s);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown(), stored(u"One"_s));
    EXPECT_EQ(editor->accessibleName(), areOfCodes ? u"Code memo"_s : u"Document memo"_s);
}

TEST_P(Memos, StayWithWhatTheyWereTypedFor)
{
    write(u"Other"_s, u"precious"_s);
    input({}, u"old"_s);
    editor->selectAll();
    input(u"n"_s, {}); // replaces the whole memo
    EXPECT_TRUE(editor->hasFocus());
    input({}, u"你"_s);
    input(u"word"_s, {});
    show(u"Other"_s); // as the end of an import does
    EXPECT_EQ(stored(u"One"_s), u"你word"_s);
    const ChangeCounter changes(areOfCodes ? static_cast<const Notifier &>(store.codes()) : store.documents());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown(), u"precious"_s) << "undoing ends at another memo";
    show(u"One"_s);
    root().hide();
    EXPECT_EQ(changes.count(), 0);
    root().show();
    library.queue->write([](Database &database) {
        database.execute("UPDATE document SET memo = 'new' WHERE title = 'One'");
        database.execute("UPDATE code SET memo = 'new' WHERE name = 'One'");
    });
    store.refresh();
    EXPECT_EQ(shown(), u"new"_s) << "another program has written it";
    if (areOfCodes)
        store.deleteCode(library.code(u"One"_s));
    else
        store.deleteDocument(library.document(u"One"_s));
    show(u"Other"_s);
    EXPECT_EQ(shown(), u"precious"_s);
    EXPECT_EQ(stored(u"Other"_s), u"precious"_s);
}

TEST_P(Memos, CloseTheirEditorWhenClearedUnlessTheUserOpenedIt)
{
    type(u"content"_s);
    const auto clear = [this] {
        editor->selectAll();
        press(Qt::Key_Delete);
    };
    clear();
    show(u"Other"_s);
    EXPECT_TRUE(editor->isVisible());
    press(Qt::Key_Tab);
    EXPECT_FALSE(editor->hasFocus());
    root().hide();
    root().show();
    EXPECT_TRUE(button->isVisible());
    write(u"Other"_s, u"content"_s);
    EXPECT_FALSE(button->isVisible());
    QApplication::setActiveWindow(&root());
    editor->setFocus();
    clear();
    EXPECT_TRUE(button->hasFocus()) << "the keyboard's place isn't lost";
    EXPECT_EQ(stored(u"Other"_s), QString());
}

TEST_P(Memos, ThatCouldNotBeStoredKeepTheWindowOnceAndAreStoredLater)
{
    const QUuid project = store.project()->value().id;
    store.createProject(u"Another"_s);
    store.selectProject(project);
    show(u"One"_s);
    QTest::mouseClick(button, Qt::LeftButton);
    const QString large = u"more than a page holds "_s.repeated(400);
    toggleWrites();
    input({}, large);
    type(u"and more"_s);
    EXPECT_EQ(root().findChild<Alert *>(), nullptr) << "the complaint waits for a pause in writing";
    EXPECT_TRUE(QTest::qWaitFor([this] { return root().findChild<Alert *>() != nullptr; }));
    store.lastError().set({});
    EXPECT_FALSE(root().close());
    EXPECT_FALSE(root().close()) << "nobody has read yet why";
    EXPECT_TRUE(store.lastError()->value_or(QString()).contains(u"Close the window again"_s));
    store.lastError().set({});
    settle();
    EXPECT_TRUE(root().close());
    root().show();
    show(u"Other"_s);
    store.refresh();
    show(u"One"_s);
    EXPECT_EQ(shown(), large + u"and more"_s);
    toggleWrites();
    show(u"Other"_s);
    store.selectProject(store.projects()->last().id);
    store.selectProject(project);
    EXPECT_EQ(stored(u"One"_s), large + u"and more"_s);
}
