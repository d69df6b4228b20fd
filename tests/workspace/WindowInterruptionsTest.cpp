#include "ShownWindow.h"
#include "workspace/controls/Alert.h"
#include "workspace/picker/CodePickerPopover.h"
#include "workspace/reader/SelectionBar.h"

#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextLayout>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// What happens while something else is going on.
class WindowInterruptions : public ShownWindow {
protected:
    void openPicker()
    {
        QTest::mouseClick(&find<SelectionBar>().addButton(), Qt::LeftButton);
        QApplication::processEvents();
    }
};

} // namespace

TEST_F(WindowInterruptions, AnotherDocumentShowsItsBeginningThoughTheFindBarIsOpen)
{
    library.paste(u"first"_s, u"some words\n"_s.repeated(300) + u"the end"_s);
    library.paste(u"second"_s, u"the end"_s);
    open();
    root().openFindBar();
    QTest::keyClicks(&find<QLineEdit>(u"findField"_s), u"end"_s);
    library.store.selectedDocumentID().set(library.document(u"first"_s).id);
    QApplication::processEvents();
    EXPECT_EQ(text().findMatches().size(), 1U);
    EXPECT_EQ(text().selection(), (TextRange{0, 0}));
    EXPECT_EQ(text().verticalScrollBar()->value(), 0);
    EXPECT_EQ(find<QWidget>(u"findCount"_s).accessibleName(), u"1 match"_s);
}

TEST_F(WindowInterruptions, AClickIntoTheTextClosesThePickerAndKeepsThePassage)
{
    library.paste(u"A"_s, u"some words to code"_s);
    open();
    drag(0, 4);
    openPicker();
    QTest::mouseClick(text().viewport(), Qt::LeftButton, {}, text().characterRectangle(12).center());
    QApplication::processEvents();
    EXPECT_FALSE(find<CodePickerPopover>().isVisible());
    EXPECT_TRUE(find<SelectionBar>().isVisible());
    EXPECT_EQ(text().selection(), (TextRange{0, 4}));
}

TEST_F(WindowInterruptions, ThePickerStaysAtItsButtonWhenTheWindowIsResized)
{
    library.paste(u"A"_s, u"some words to code"_s);
    open();
    drag(0, 4);
    openPicker();
    for (const QSize size : {QSize(1000, 640), QSize(1600, 900), QSize(500, 300), QSize(1180, 780)}) {
        root().resize(size);
        QApplication::processEvents();
        auto &bar = find<SelectionBar>();
        const QRect body = find<CodePickerPopover>().bodyInWindow();
        EXPECT_EQ(body.bottom() + 1 + 8, bar.mapTo(&root(), bar.bodyRect().topLeft()).y()) << size.width();
        const int buttonMiddle = bar.addButton().mapTo(&root(), bar.addButton().rect().center()).x();
        const int rightmost = root().width() - 8 - body.width() / 2; // it never leaves the window
        EXPECT_NEAR(body.center().x(), std::min(buttonMiddle, rightmost), 1) << size.width();
    }
}

TEST_F(WindowInterruptions, FindingClosesThePicker)
{
    library.paste(u"A"_s, u"some words to code"_s);
    open();
    drag(0, 4);
    openPicker();
    root().openFindBar();
    EXPECT_FALSE(find<CodePickerPopover>().isVisible());
    EXPECT_TRUE(find<QLineEdit>(u"findField"_s).hasFocus());
    EXPECT_EQ(text().selection(), (TextRange{0, 4}));
}

TEST_F(WindowInterruptions, AnErrorOutlivesTheSheetThatItCameOver)
{
    open();
    library.store.showPasteSheet().set(true);
    QApplication::processEvents();
    library.store.lastError().set(u"No room"_s);
    library.store.showPasteSheet().set(false);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
    auto &alert = find<Alert>();
    EXPECT_TRUE(alert.isVisible());
    EXPECT_EQ(alert.accessibleDescription(), u"No room"_s);
    QTest::keyClick(&alert, Qt::Key_Escape);
    EXPECT_EQ(library.store.lastError().get(), std::nullopt);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
    EXPECT_EQ(root().findChild<Alert *>(), nullptr);
}

TEST_F(WindowInterruptions, TheSelectedTitleIsCopied)
{
    library.paste(u"A title"_s, u"some words to code"_s);
    open();
    auto &title = find<QTextEdit>(u"documentTitle"_s);
    QTest::mouseDClick(title.viewport(), Qt::LeftButton, {}, QPoint(4, title.height() / 2));
    QApplication::clipboard()->setText(u"before"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"A"_s);
    text().setFocus(Qt::MouseFocusReason);
    EXPECT_FALSE(title.textCursor().hasSelection());
}

TEST_F(WindowInterruptions, ATitleFromRightToLeftBeginsWhereTheTextBelowDoes)
{
    library.paste(u"\u05E9\u05DC\u05D5\u05DD"_s, u"some words to code"_s);
    open();
    const QTextLayout *title = find<QTextEdit>(u"documentTitle"_s).document()->firstBlock().layout();
    ASSERT_EQ(title->lineCount(), 1);
    EXPECT_LT(title->lineAt(0).naturalTextRect().left(), 1);
}

TEST_F(WindowInterruptions, AnEndlessTitleLeavesRoomToRead)
{
    library.paste(u"A"_s, u"some words to code"_s);
    open();
    for (const QString &title : {u"W"_s.repeated(300), u"long words "_s.repeated(2900), u"\u05E9"_s.repeated(32767)}) {
        library.store.renameDocument(library.store.documents()->first(), title);
        QApplication::processEvents();
        EXPECT_LE(root().minimumSizeHint().width(), 900) << title.size();
        EXPECT_LE(root().minimumSizeHint().height(), 600) << title.size();
        EXPECT_EQ(root().size(), QSize(1180, 780)) << title.size();
        EXPECT_GE(text().height(), 200) << title.size();
    }
}

TEST_F(WindowInterruptions, TheMenuOfAPassageFitsOnTheScreenWhateverItsCodeIsCalled)
{
    const Document document = library.paste(u"A"_s, u"some words to code"_s);
    const Code code = library.makeCodes({u"long words "_s.repeated(2000)}).first();
    library.store.assignCode(code, document, {0, 4});
    open();
    const std::unique_ptr<QMenu> menu(text().createContextMenu(1));
    EXPECT_LE(menu->sizeHint().width(), 600);
}
