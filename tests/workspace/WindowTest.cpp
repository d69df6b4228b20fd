#include "ShownWindow.h"
#include "kit/controls/Alert.h"
#include "kit/theme/Metrics.h"
#include "workspace/StatusBanner.h"
#include "workspace/lists/DocumentListView.h"
#include "workspace/picker/CodePickerPopover.h"
#include "workspace/reader/SelectionBar.h"
#include "workspace/sidebar/SidebarView.h"

#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QTimer>

using namespace Qt::StringLiterals;

using Window = ShownWindow;

TEST_F(Window, FitsTheScreenAtFirstAndItsColumnsKeepTheirLimits)
{
    const RootView fresh(library.store);
    EXPECT_LE(fresh.height(), fresh.screen()->availableSize().height());
    library.makeCodes({u"A name that goes on and on, "_s.repeated(11)});
    library.paste(u"A"_s, u"some words"_s);
    open();
    for (const QString &title : {u"W"_s.repeated(300), u"long words "_s.repeated(2900)}) {
        library.store.renameDocument(library.store.documents()->first(), title);
        for (const QSize size : {QSize(2560, 1440), QSize(500, 300), QSize(1180, 780)}) {
            root().resize(size);
            QApplication::processEvents();
            EXPECT_LE(root().width(), std::max(size.width(), 900));
            EXPECT_LE(root().height(), std::max(size.height(), 600));
            const int sidebar = find<SidebarView>().width();
            EXPECT_TRUE(sidebar >= 185 && sidebar <= 280) << sidebar;
            const int list = find<DocumentListView>().width();
            EXPECT_TRUE(list >= ListMetrics::minColumnWidth && list <= ListMetrics::maxColumnWidth) << list;
        }
        EXPECT_GE(text().height(), 200) << title.size();
    }
}

TEST_F(Window, CodesADraggedPassageWithANewNameAndReturn)
{
    const QString passage = u"😀 behind\r\nit"_s;
    const QString content = u"Before\r\n\u2028and "_s + passage + u" and after.\n"_s + u"line\n"_s.repeated(200);
    library.paste(u"A"_s, content);
    open();
    const qint64 start = content.indexOf(passage);
    text().verticalScrollBar()->setValue(7);
    drag(start, start + passage.size());
    const int scrolled = text().verticalScrollBar()->value();
    QTest::mouseClick(&find<SelectionBar>().addButton(), Qt::LeftButton);
    QTest::keyClicks(&find<QLineEdit>(u"pickerField"_s), u" Feelings "_s);
    EXPECT_EQ(text().selection().length, passage.size());
    QTest::keyClick(&find<QLineEdit>(u"pickerField"_s), Qt::Key_Return);
    QApplication::processEvents();
    ASSERT_EQ(library.storedCodings().size(), 1);
    EXPECT_EQ(library.storedCodings().first().range(), (TextRange{start, passage.size()}));
    EXPECT_EQ(library.code(u"Feelings"_s).id, library.storedCodings().first().codeID);
    EXPECT_FALSE(find<SelectionBar>().isVisible());
    EXPECT_EQ(text().selection().length, 0);
    EXPECT_EQ(text().verticalScrollBar()->value(), scrolled);
}

TEST_F(Window, ThePickerStaysInsideAndClosesAtAClickAndAtFinding)
{
    library.paste(u"A"_s, u"some words to code"_s);
    open();
    drag(0, 4);
    auto &bar = find<SelectionBar>();
    for (const bool isByClick : {true, false}) {
        QTest::mouseClick(&bar.addButton(), Qt::LeftButton);
        for (const QSize size : {QSize(1600, 900), QSize(500, 300)}) {
            root().resize(size);
            QApplication::processEvents();
            const QRect body = find<CodePickerPopover>().bodyInWindow();
            EXPECT_TRUE(root().rect().contains(body)) << size.width();
            EXPECT_LT(body.bottom(), bar.mapTo(&root(), bar.bodyRect().topLeft()).y()) << size.width();
            const int button = bar.addButton().mapTo(&root(), bar.addButton().rect().center()).x();
            EXPECT_TRUE(body.left() < button && button < body.right()) << size.width();
        }
        if (isByClick)
            QTest::mouseClick(text().viewport(), Qt::LeftButton, {}, text().characterRectangle(12).center());
        else
            root().openFindBar();
        settle();
        EXPECT_EQ(root().findChild<CodePickerPopover *>(), nullptr);
        EXPECT_EQ(text().selection(), (TextRange{0, 4}));
        EXPECT_TRUE(bar.isVisible() || !isByClick);
    }
    EXPECT_TRUE(find<QLineEdit>(u"findField"_s).hasFocus());
}

TEST_F(Window, ARevealOpensAnotherDocumentAtThePassageAndAnotherProjectItsOwnDocuments)
{
    const Document first = library.paste(u"first"_s, u"some words\n"_s.repeated(300) + u"the end"_s);
    library.store.setDocumentMemo(first, u"of the first"_s);
    library.paste(u"second"_s, u"other words"_s);
    const Code code = library.makeCodes({u"One"_s}).first();
    library.store.assignCode(code, first, {first.text.size() - 7, 7});
    open();
    drag(0, 5);
    library.store.reveal(library.store.excerpts(code.id).first());
    QApplication::processEvents();
    EXPECT_EQ(text().text(), first.text);
    EXPECT_FALSE(find<SelectionBar>().isVisible());
    EXPECT_TRUE(text().viewport()->rect().contains(text().characterRectangle(first.text.size() - 1).center()));

    const QUuid firstProject = library.store.project()->value().id;
    library.store.createProject(u"Another"_s);
    library.paste(u"third"_s, u"third words"_s);
    library.store.sidebarSelection().set(SidebarSelection(ProjectSelection{firstProject}));
    library.store.selectedDocumentID().set(first.id);
    QApplication::processEvents();
    EXPECT_EQ(library.store.project()->value().id, firstProject);
    EXPECT_EQ(find<QTextEdit>(u"documentTitle"_s).toPlainText(), u"first"_s);
    EXPECT_EQ(find<QTextEdit>(u"memo"_s).toPlainText(), u"of the first"_s);
}

TEST_F(Window, FindBarGoesRoundThroughItsMatchesAndEscapeClosesIt)
{
    const Document other = library.paste(u"B"_s, u"some words\n"_s.repeated(300) + u"the table"_s);
    library.paste(u"A"_s, u"Table one, table two, TABLE three"_s);
    open();
    QTest::keyClick(&root(), Qt::Key_F, Qt::ControlModifier);
    root().openFindBar();
    auto &field = find<QLineEdit>(u"findField"_s);
    EXPECT_TRUE(field.hasFocus());
    const auto expectCurrent = [this](qint64 start, const QString &count) {
        EXPECT_EQ(text().selection(), (TextRange{start, 5}));
        EXPECT_EQ(find<QWidget>(u"findCount"_s).accessibleName(), count);
    };
    QTest::keyClicks(&field, u"table"_s);
    expectCurrent(0, u"1 of 3"_s);
    QTest::keyClick(&field, Qt::Key_Return, Qt::ShiftModifier);
    expectCurrent(22, u"3 of 3"_s);
    QTest::keyClick(&field, Qt::Key_Return);
    expectCurrent(0, u"1 of 3"_s);

    library.store.selectedDocumentID().set(other.id); // which shows its beginning nevertheless
    QApplication::processEvents();
    EXPECT_EQ(text().selection(), (TextRange{0, 0}));
    EXPECT_EQ(text().verticalScrollBar()->value(), 0);
    EXPECT_EQ(find<QWidget>(u"findCount"_s).accessibleName(), u"1 match"_s);
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_FALSE(find<QWidget>(u"findBar"_s).isVisible());
    EXPECT_TRUE(text().findMatches().empty());
}

TEST_F(Window, BannerStaysFourSecondsAndOneThatReplacedItStays)
{
    open();
    std::vector<std::function<void()>> jobs;
    root().banner().setRunLater([&](std::chrono::milliseconds delay, std::function<void()> job) {
        EXPECT_EQ(delay, std::chrono::seconds(4));
        jobs.push_back(std::move(job));
    });
    library.store.statusMessage().set(u"Done"_s);
    library.store.statusMessage().set(u"Done again"_s);
    ASSERT_EQ(jobs.size(), 1U) << "a new text gets no time of its own";
    jobs[0]();
    EXPECT_TRUE(root().banner().isVisible());
    EXPECT_TRUE(root().rect().contains(root().banner().geometry().center()));
    library.store.statusMessage().set({});
    EXPECT_FALSE(root().banner().isVisible());
}

TEST_F(Window, ErrorsStayOneAfterTheOtherAndOutliveTheSheetThatTheyCameOver)
{
    open();
    const auto expectError = [this](const QString &message) {
        settle();
        EXPECT_TRUE(find<Alert>().isVisible());
        EXPECT_EQ(find<Alert>().accessibleDescription(), message);
    };
    library.store.showPasteSheet().set(true);
    library.store.lastError().set(u"No room"_s);
    library.store.showPasteSheet().set(false);
    expectError(u"No room"_s);
    library.store.lastError().set(u"second"_s);
    QTest::keyClick(&find<Alert>(), Qt::Key_Return);
    expectError(u"second"_s);
    QTest::keyClick(&find<Alert>(), Qt::Key_Escape);
    settle();
    EXPECT_EQ(library.store.lastError().get(), std::nullopt);
    EXPECT_EQ(root().findChild<Alert *>(), nullptr);

    const QTemporaryDir folder;
    QList<QUrl> urls;
    for (const QString &name : {u"0.pdf"_s, u"1.pdf"_s}) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        urls.append(QUrl::fromLocalFile(file.fileName()));
    }
    library.store.importURLs(urls);
    expectError(u"1.pdf: Couldn't read 1.pdf."_s); // of the two the last one, when the import is over
}

TEST_F(Window, EditMenuServesTheFieldInFocus)
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

    auto &search = find<QLineEdit>(u"documentSearch"_s);
    search.setFocus();
    QMenu &menu = *root().menuBar()->actions().at(1)->menu();
    const auto expectPossible = [&](const QStringList &titles) {
        QStringList possible;
        Q_EMIT menu.aboutToShow();
        for (const QAction *action : menu.actions()) {
            if (action->isEnabled() && !action->isSeparator())
                possible.append(action->text());
        }
        Q_EMIT menu.aboutToHide();
        EXPECT_EQ(possible, titles + QStringList{u"Find…"_s});
    };
    expectPossible({u"Paste"_s});
    for (const auto &[entry, content] : {std::pair{u"Paste"_s, u"A"_s}, {u"Undo"_s, u""_s}, {u"Redo"_s, u"A"_s},
             {u"Select All"_s, u"A"_s}, {u"Copy"_s, u"A"_s}, {u"Cut"_s, u""_s}}) {
        take(menu, {entry});
        EXPECT_EQ(search.text(), content) << entry.toStdString();
    }
    take(menu, {u"Paste"_s});
    expectPossible({u"Undo"_s, u"Paste"_s, u"Select All"_s});
}

TEST_F(Window, TheMenuOfAPassageFitsOnTheScreenWhateverItsCodeIsCalled)
{
    const Document document = library.paste(u"A"_s, u"some words to code"_s);
    library.store.assignCode(library.makeCodes({u"long words "_s.repeated(2000)}).first(), document, {0, 4});
    open();
    const std::unique_ptr<QMenu> menu(text().createContextMenu(1));
    EXPECT_LE(menu->sizeHint().width(), 600);
}

TEST_F(Window, ClosingItQuits)
{
    open();
    constexpr int stillRunning = 1;
    QTimer::singleShot(0, &root(), &QWidget::close);
    QTimer::singleShot(1500, &root(), [] { QApplication::exit(stillRunning); });
    EXPECT_EQ(QApplication::exec(), 0);
}
