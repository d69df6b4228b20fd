#include "ShownWindow.h"
#include "kit/controls/Alert.h"
#include "kit/theme/ThemedTest.h"
#include "workspace/lists/ExcerptListView.h"
#include "workspace/lists/MemoBar.h"
#include "workspace/reader/ReaderView.h"

#include <QInputMethodEvent>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// A memo belongs to the document or code it was typed for, and the editor shows what is stored.

namespace {

void commitTo(QTextEdit &editor, const QString &word)
{
    QInputMethodEvent event;
    event.setCommitString(word);
    QApplication::sendEvent(&editor, &event);
}

void compose(QTextEdit &editor, const QString &word)
{
    QInputMethodEvent event(word, {});
    QApplication::sendEvent(&editor, &event);
}

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

class MemoBarAlone : public ThemedTest {
protected:
    MemoBarAlone() : m_bar(new MemoBar(u"Code memo…"_s))
    {
        auto *column = new QVBoxLayout(&m_window);
        column->addWidget(m_bar);
        column->addStretch();
        QObject::connect(m_bar, &MemoBar::committed, m_bar, [this](const QString &text) { m_commits.append(text); });
        showWindow();
    }
    ~MemoBarAlone() override { delete m_bar; } // it commits into this
    [[nodiscard]] QTextEdit &editor() const { return *m_bar->findChild<QTextEdit *>(); }
    [[nodiscard]] QPushButton &button() const { return *m_bar->findChild<QPushButton *>(); }
    void clearByKeyboard() const
    {
        editor().setFocus();
        QTest::keyClick(&editor(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&editor(), Qt::Key_Delete);
    }

    MemoBar *m_bar;
    QStringList m_commits;
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
    compose(memo, u"word"_s);
    select(u"Second"_s); // as the end of an import does
    EXPECT_EQ(memoOf(u"First"_s), u"word"_s);
    EXPECT_EQ(memoOf(u"Second"_s), u"precious"_s);
    EXPECT_EQ(memo.toPlainText(), u"precious"_s);

    selectCode(u"One"_s);
    compose(codeEditor(), u"word"_s);
    selectCode(u"Other"_s);
    EXPECT_EQ(codeMemo(u"One"_s), u"word"_s);
    EXPECT_EQ(codeMemo(u"Other"_s), u"precious"_s);
    EXPECT_EQ(memo.accessibleName(), u"Document memo"_s);
    EXPECT_EQ(codeEditor().accessibleName(), u"Code memo"_s);
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
    compose(memo, u"n"_s);
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

TEST_F(MemoBarAlone, EveryKeystrokeIsCommittedOnceAndNothingThatIsSet)
{
    m_bar->setText(u"x"_s);
    editor().moveCursor(QTextCursor::End);
    QTest::keyClicks(&editor(), u"ab"_s);
    QTest::keyClick(&editor(), Qt::Key_Return);
    QTest::keyClick(&editor(), Qt::Key_Backspace);
    EXPECT_EQ(m_commits, (QStringList{u"xa"_s, u"xab"_s, u"xab\n"_s, u"xab"_s}));
    m_commits.clear();
    m_bar->setText(u"memo of another"_s);
    QTest::keyClick(&editor(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_commits, QStringList()) << "it can't be undone into the next";
    EXPECT_EQ(m_bar->text(), u"memo of another"_s);
    EXPECT_EQ(editor().toPlainText(), u"memo of another"_s);
}

TEST_F(MemoBarAlone, OpensForTypingAndCollapsesWhenItIsClearedUnlessTheUserOpenedIt)
{
    m_bar->setText(u"content"_s);
    clearByKeyboard();
    EXPECT_FALSE(editor().isVisible());
    EXPECT_TRUE(button().hasFocus()); // the keyboard's place isn't lost
    EXPECT_EQ(m_commits, QStringList(QString()));

    QTest::mouseClick(&button(), Qt::LeftButton);
    EXPECT_TRUE(editor().hasFocus());
    EXPECT_FALSE(button().isVisible());
    QTest::keyClicks(&editor(), u"again"_s);
    clearByKeyboard();
    m_bar->setText({}); // also when another thing's memo is shown
    EXPECT_TRUE(editor().isVisible());
    QTest::keyClick(&editor(), Qt::Key_Tab);
    EXPECT_FALSE(editor().hasFocus());
    m_commits.clear();
    m_bar->hide();
    EXPECT_EQ(m_commits, QStringList(QString())) << "once more when it disappears";
    m_bar->show();
    EXPECT_TRUE(button().isVisible());
}
