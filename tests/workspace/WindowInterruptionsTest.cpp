#include "ShownWindow.h"
#include "kit/controls/Alert.h"
#include "workspace/picker/CodePickerPopover.h"
#include "workspace/reader/SelectionBar.h"

#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextEdit>

using namespace Qt::StringLiterals;

/// What happens while something else is going on.
using WindowInterruptions = ShownWindow;

TEST_F(WindowInterruptions, ThePickerClosesAtAClickAndAtFindingAndThePassageStays)
{
    library.paste(u"A"_s, u"some words to code"_s);
    open();
    drag(0, 4);
    const auto expectClosed = [this] {
        QApplication::processEvents();
        EXPECT_FALSE(find<CodePickerPopover>().isVisible());
        EXPECT_EQ(text().selection(), (TextRange{0, 4}));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    QTest::mouseClick(&find<SelectionBar>().addButton(), Qt::LeftButton);
    for (const QSize size : {QSize(1600, 900), QSize(500, 300)}) {
        root().resize(size);
        QApplication::processEvents();
        const QRect body = find<CodePickerPopover>().bodyInWindow();
        EXPECT_TRUE(root().rect().contains(body)) << size.width();
        auto &bar = find<SelectionBar>();
        EXPECT_LT(body.bottom(), bar.mapTo(&root(), bar.bodyRect().topLeft()).y()) << size.width();
        const int button = bar.addButton().mapTo(&root(), bar.addButton().rect().center()).x();
        EXPECT_TRUE(body.left() < button && button < body.right()) << size.width();
    }
    QTest::mouseClick(text().viewport(), Qt::LeftButton, {}, text().characterRectangle(12).center());
    expectClosed();
    EXPECT_TRUE(find<SelectionBar>().isVisible());
    QTest::mouseClick(&find<SelectionBar>().addButton(), Qt::LeftButton);
    root().openFindBar();
    expectClosed();
    EXPECT_TRUE(find<QLineEdit>(u"findField"_s).hasFocus());
}

TEST_F(WindowInterruptions, ErrorsStayOneAfterTheOtherAndOutliveTheSheetThatTheyCameOver)
{
    open();
    const auto settle = [] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    };
    library.store.showPasteSheet().set(true);
    QApplication::processEvents();
    library.store.lastError().set(u"No room"_s);
    library.store.showPasteSheet().set(false);
    settle();
    EXPECT_TRUE(find<Alert>().isVisible());
    EXPECT_EQ(find<Alert>().accessibleDescription(), u"No room"_s);
    library.store.lastError().set(u"second"_s);
    QTest::keyClick(&find<Alert>(), Qt::Key_Return);
    settle();
    EXPECT_EQ(library.store.lastError().get(), u"second"_s);
    QTest::keyClick(&find<Alert>(), Qt::Key_Escape);
    settle();
    EXPECT_EQ(library.store.lastError().get(), std::nullopt);
    EXPECT_EQ(root().findChild<Alert *>(), nullptr);
}

TEST_F(WindowInterruptions, ErrorsWaitForTheEndOfAnImport)
{
    open();
    QUrl url[2];
    const QTemporaryDir folder;
    for (const int number : {0, 1}) {
        QFile file(folder.filePath(u"%1.pdf"_s.arg(number)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        url[number] = QUrl::fromLocalFile(file.fileName());
    }
    library.store.importURLs({url[0], url[1]});
    EXPECT_EQ(find<Alert>().accessibleDescription(), u"1.pdf: Couldn't read 1.pdf."_s);
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

TEST_F(WindowInterruptions, TheMenuOfAPassageFitsOnTheScreenWhateverItsCodeIsCalled)
{
    const Document document = library.paste(u"A"_s, u"some words to code"_s);
    const Code code = library.makeCodes({u"long words "_s.repeated(2000)}).first();
    library.store.assignCode(code, document, {0, 4});
    open();
    const std::unique_ptr<QMenu> menu(text().createContextMenu(1));
    EXPECT_LE(menu->sizeHint().width(), 600);
}
