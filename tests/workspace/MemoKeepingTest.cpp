#include "ShownWindow.h"
#include "kit/controls/Alert.h"
#include "workspace/lists/ExcerptListView.h"
#include "workspace/lists/MemoBar.h"
#include "workspace/reader/ReaderView.h"

#include <QInputMethod>
#include <QPointer>
#include <QPushButton>
#include <QTextEdit>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// What is typed into a memo belongs to the document or code it was typed for, and what an editor shows is what the file
// has.

namespace {

QPointer<QTextEdit> composingEditor; ///< of the word below
QString composedWord;

void commitTo(QTextEdit &editor, const QString &word)
{
    QInputMethodEvent event;
    event.setCommitString(word);
    QApplication::sendEvent(&editor, &event);
}

} // namespace

// As some input methods do, which forget a word only when it has been taken; without any of them these are empty.
void QInputMethod::reset()
{
    if (composingEditor && !composedWord.isEmpty())
        commitTo(*composingEditor, composedWord);
    composedWord.clear();
}

void QInputMethod::commit()
{
    reset();
}

namespace {

class MemoKeeping : public ShownWindow {
protected:
    MemoKeeping()
    {
        library.makeCodes({u"One"_s, u"Other"_s});
        for (const QString &title : {u"First"_s, u"Second"_s})
            library.paste(title, u"some text"_s);
        select(u"First"_s);
    }
    void select(const QString &title) { library.store.selectedDocumentID().set(library.document(title).id); }
    void selectCode(const QString &name)
    {
        library.store.sidebarSelection().set(CodeSelection{library.code(name).id});
        QApplication::processEvents();
    }
    /// Opened if need be, with the focus, at its end.
    [[nodiscard]] QTextEdit &editor(QWidget &column) const
    {
        auto *bar = column.findChild<MemoBar *>();
        if (auto *opening = bar->findChild<QPushButton *>(); opening->isVisible())
            QTest::mouseClick(opening, Qt::LeftButton);
        auto &found = *bar->findChild<QTextEdit *>();
        found.setFocus();
        found.moveCursor(QTextCursor::End);
        return found;
    }
    [[nodiscard]] QTextEdit &documentEditor() const { return editor(find<ReaderView>()); }
    [[nodiscard]] QTextEdit &codeEditor() const { return editor(find<ExcerptListView>()); }
    [[nodiscard]] QString memoOf(const QString &title) const
    {
        return library.document(title).memo.value_or(QString());
    }
    [[nodiscard]] QString codeMemo(const QString &name) const { return library.code(name).memo.value_or(QString()); }
    /// From now on no write succeeds, until the second time.
    void toggleWrites() const
    {
        library.queue->writeWithoutTransaction([](Database &database) {
            const bool fails = database.integer("PRAGMA max_page_count") < 100'000;
            database.execute(fails ? "PRAGMA max_page_count = 1000000" : "PRAGMA max_page_count = 1");
        });
    }
};

} // namespace

TEST_F(MemoKeeping, TheEditorShowsWhatIsStored)
{
    open();
    QTextEdit &memo = documentEditor();
    QTest::keyClicks(&memo, u"a"_s);
    QTest::keyClick(&memo, Qt::Key_Return, Qt::ShiftModifier);
    commitTo(memo, u"b\u2028c"_s + QChar(0xD800) + u'd');
    EXPECT_EQ(memoOf(u"First"_s), u"a\nb\nc\uFFFDd"_s);
    QString shown = memo.document()->toRawText();
    EXPECT_EQ(shown.replace(QChar::ParagraphSeparator, u'\n'), memoOf(u"First"_s));
    QTest::keyClick(&memo, Qt::Key_Z, Qt::ControlModifier);
    shown = memo.document()->toRawText();
    EXPECT_EQ(shown.replace(QChar::ParagraphSeparator, u'\n'), memoOf(u"First"_s));
    EXPECT_FALSE(shown.contains(QChar::LineSeparator));

    QTest::keyClick(&memo, Qt::Key_Left, Qt::ShiftModifier);
    QTest::keyClick(&memo, Qt::Key_Return); // something, then a line break that is replaced by one of the other kind
    memo.moveCursor(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor);
    QTest::keyClick(&memo, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_FALSE(memo.document()->toRawText().contains(QChar::LineSeparator));
}

TEST_F(MemoKeeping, AWordThatIsBeingComposedGoesIntoTheMemoItWasMeantFor)
{
    library.store.setDocumentMemo(library.document(u"Second"_s), u"precious"_s);
    library.store.setCodeMemo(library.code(u"Other"_s), u"precious"_s);
    open();
    QTextEdit &memo = documentEditor();
    composingEditor = &memo;
    composedWord = u"word"_s;
    select(u"Second"_s); // as the end of an import does
    EXPECT_EQ(memoOf(u"First"_s), u"word"_s);
    EXPECT_EQ(memoOf(u"Second"_s), u"precious"_s);
    EXPECT_EQ(memo.toPlainText(), u"precious"_s);

    selectCode(u"One"_s);
    QTextEdit &ofCode = codeEditor();
    composingEditor = &ofCode;
    composedWord = u"word"_s;
    selectCode(u"Other"_s);
    EXPECT_EQ(codeMemo(u"One"_s), u"word"_s);
    EXPECT_EQ(codeMemo(u"Other"_s), u"precious"_s);
}

TEST_F(MemoKeeping, AMemoThatComesFromElsewhereIsShownAndNotWrittenOver)
{
    library.store.setDocumentMemo(library.document(u"First"_s), u"old"_s);
    library.store.setCodeMemo(library.code(u"One"_s), u"old"_s);
    selectCode(u"One"_s);
    open();
    library.queue->write([](Database &database) {
        database.execute("UPDATE document SET memo = 'new' WHERE title = 'First'");
        database.execute("UPDATE code SET memo = 'new' WHERE name = 'One'");
    });
    library.store.refresh();
    EXPECT_EQ(documentEditor().toPlainText(), u"new"_s);
    EXPECT_EQ(codeEditor().toPlainText(), u"new"_s);
    root().hide();
    library.store.refresh();
    EXPECT_EQ(memoOf(u"First"_s), u"new"_s);
    EXPECT_EQ(codeMemo(u"One"_s), u"new"_s);
}

TEST_F(MemoKeeping, AWordInTheMakingMayReplaceTheWholeMemo)
{
    library.store.setDocumentMemo(library.document(u"First"_s), u"old"_s);
    open();
    QTextEdit &memo = documentEditor();
    memo.selectAll();
    QInputMethodEvent composing(u"n"_s, {});
    QApplication::sendEvent(&memo, &composing);
    EXPECT_TRUE(memo.isVisible() && memo.hasFocus());
    commitTo(memo, u"你"_s);
    EXPECT_EQ(memoOf(u"First"_s), u"你"_s);
}

TEST_F(MemoKeeping, TheComplaintWaitsForAPauseInWriting)
{
    open();
    toggleWrites();
    QTextEdit &memo = documentEditor();
    commitTo(memo, u"more than a page holds "_s.repeated(400));
    QTest::keyClicks(&memo, u" and more "_s);
    EXPECT_TRUE(memo.toPlainText().endsWith(u" and more "_s));
    EXPECT_EQ(root().findChild<Alert *>(), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([this] { return root().findChild<Alert *>() != nullptr; }));
}

TEST_F(MemoKeeping, TheWindowStaysOnceForAMemoThatWouldBeLost)
{
    open();
    toggleWrites();
    commitTo(documentEditor(), u"more than a page holds "_s.repeated(400));
    library.store.lastError().set({});
    EXPECT_FALSE(root().close());
    EXPECT_FALSE(root().close()) << "she hasn't read why yet";
    EXPECT_TRUE(library.store.lastError()->value_or(QString()).contains(u"Close the window again"_s));
    library.store.lastError().set({});
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(root().close());
}

TEST_F(MemoKeeping, WhatCouldNotBeStoredIsStoredWhenTheMemoIsLeft)
{
    const QUuid project = library.store.project()->value().id;
    library.store.createProject(u"Another"_s);
    library.store.selectProject(project);
    const QString typed = u"more than a page holds "_s.repeated(400);
    selectCode(u"One"_s);
    select(u"First"_s);
    open();
    toggleWrites();
    commitTo(documentEditor(), typed);
    commitTo(codeEditor(), typed);
    EXPECT_TRUE(library.store.lastError().get());
    select(u"Second"_s);
    library.store.refresh();
    select(u"First"_s);
    EXPECT_EQ(documentEditor().toPlainText(), typed);
    EXPECT_EQ(codeEditor().toPlainText(), typed);
    toggleWrites();
    selectCode(u"Other"_s);
    library.store.selectProject(library.store.projects()->last().id);
    library.store.selectProject(project);
    EXPECT_EQ(memoOf(u"First"_s), typed);
    EXPECT_EQ(codeMemo(u"One"_s), typed);
}
