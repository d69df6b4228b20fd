#include "ShownWindow.h"
#include "kit/controls/Alert.h"
#include "platform/AtomicFile.h"
#include "workspace/StatusBanner.h"
#include "workspace/picker/CodePickerPopover.h"

#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QUrl>

using namespace Qt::StringLiterals;

using Window = ShownWindow;

TEST_F(Window, ThePickerStaysInsideAndClosesAtAClickAndAtFinding)
{
    library.paste(u"A"_s, u"some words to code"_s);
    open();
    root().resize(900, 600);
    drag(0, 4);
    for (const bool isByClick : {true, false}) {
        click(u"addCode"_s);
        const QRect body = find<CodePickerPopover>().bodyInWindow();
        const QPoint button = find(u"addCode"_s).mapTo(&root(), QPoint());
        EXPECT_TRUE(root().rect().contains(body) && body.bottom() < button.y());
        EXPECT_TRUE(body.left() < button.x() && button.x() < body.right());
        if (isByClick)
            click(*text().viewport(), text().characterRectangle(12).center());
        else
            press(Qt::Key_F, Qt::ControlModifier);
        EXPECT_EQ(root().findChild<CodePickerPopover *>(), nullptr);
        EXPECT_EQ(text().selection(), (TextRange{0, 4}));
        EXPECT_EQ(find(u"selectionBar"_s).isVisible(), isByClick);
    }
}

TEST_F(Window, FindBarGoesRoundThroughItsMatchesAndEscapeClosesIt)
{
    library.paste(u"B"_s, u"some words\n"_s.repeated(300) + u"the table"_s);
    library.paste(u"A"_s, u"Table one, table two, TABLE three"_s);
    open();
    press(Qt::Key_F, Qt::ControlModifier);
    type(u"table"_s);
    const auto expectCurrent = [this](TextRange selection, const QString &count) {
        EXPECT_EQ(text().selection(), selection);
        EXPECT_EQ(find(u"findCount"_s).accessibleName(), count);
    };
    expectCurrent({0, 5}, u"1 of 3"_s);
    press(Qt::Key_Return, Qt::ShiftModifier);
    expectCurrent({22, 5}, u"3 of 3"_s);
    press(Qt::Key_Return);
    expectCurrent({0, 5}, u"1 of 3"_s);
    clickRow(u"documentList"_s, u"B"_s); // which shows its beginning nevertheless
    expectCurrent({0, 0}, u"1 match"_s);
    EXPECT_EQ(text().verticalScrollBar()->value(), 0);
    click(u"findField"_s);
    press(Qt::Key_Escape);
    EXPECT_FALSE(find(u"findBar"_s).isVisible());
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
    for (const QString &message : {u"Done"_s, u"Done again"_s})
        library.store.statusMessage().set(message);
    ASSERT_EQ(jobs.size(), 1U) << "a new text gets no time of its own";
    jobs[0]();
    EXPECT_TRUE(root().banner().isVisible());
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
    press(Qt::Key_Return);
    expectError(u"second"_s);
    press(Qt::Key_Escape);
    EXPECT_EQ(library.store.lastError().get(), std::nullopt);
    EXPECT_EQ(root().findChild<Alert *>(), nullptr);
    const QTemporaryDir folder;
    QList<QUrl> urls;
    for (const QString &name : {u"0.pdf"_s, u"1.pdf"_s}) {
        AtomicFile::write(folder.filePath(name), {});
        urls.append(QUrl::fromLocalFile(folder.filePath(name)));
    }
    library.store.importURLs(urls);
    expectError(u"1.pdf: Couldn't read 1.pdf."_s); // of the two the last one, when the import is over
}

TEST_F(Window, EditMenuServesTheFieldInFocus)
{
    open();
    QApplication::clipboard()->setText(u"A"_s);
    const auto &search = find<QLineEdit>(u"documentSearch"_s);
    click(search);
    const QStringList entries{u"Paste"_s, u"Undo"_s, u"Redo"_s, u"Select All"_s, u"Copy"_s, u"Cut"_s};
    for (const QString &entry : entries) {
        choose(u"&Edit"_s, entry);
        EXPECT_EQ(search.text(), entry == u"Undo" || entry == u"Cut" ? QString() : u"A"_s) << entry.toStdString();
    }
    choose(u"&Edit"_s, u"Paste"_s);
    QMenu *menu = root().menuBar()->actions()[1]->menu();
    Q_EMIT menu->aboutToShow();
    for (const QAction *action : menu->actions()) {
        const bool isImpossible = QStringList{u"Redo"_s, u"Cut"_s, u"Copy"_s}.contains(action->text());
        EXPECT_EQ(action->isEnabled(), !isImpossible) << action->text().toStdString();
    }
}

TEST_F(Window, TabGoesThroughTheColumnsFromLeftToRightAndBack)
{
    const Code code = library.makeCodes({u"One"_s}).first();
    library.store.setDocumentMemo(library.paste(u"A"_s, u"some words"_s), u"kept"_s);
    open();
    drag(0, 4);
    find(u"sidebarList"_s).setFocus(Qt::TabFocusReason);
    EXPECT_EQ(stops(),
        (QStringList{u"sidebarList"_s, u"documentSearch"_s, u"documentList"_s, u"memo"_s, u"Document text"_s,
            u"addCode"_s, u"closeTip"_s, u"import"_s}));
    press(Qt::Key_F, Qt::ControlModifier);
    library.store.sidebarSelection().set(CodeSelection{code.id});
    find(u"sidebarList"_s).setFocus(Qt::TabFocusReason);
    const QStringList places = stops();
    EXPECT_EQ(places.value(1), u"allDocuments"_s);
    EXPECT_TRUE(places.contains(u"findField"_s));
}

TEST_F(Window, APassageIsCodedWithoutTheMouseWithTheFirstCodeOfAnExactName)
{
    library.makeCodes({u"Trusting"_s, u"trust"_s});
    library.paste(u"A"_s, u"some words to code"_s);
    open();
    text().setFocus(Qt::TabFocusReason);
    for (int each = 0; each < 4; ++each)
        press(Qt::Key_Right, Qt::ShiftModifier);
    press(Qt::Key_Tab);
    for (const Qt::Key ending : {Qt::Key_Escape, Qt::Key_Return}) {
        EXPECT_TRUE(find(u"selectionBar"_s).isVisible()) << "the passage is still there to be coded";
        EXPECT_TRUE(library.storedCodings().isEmpty());
        press(Qt::Key_Space);
        type(u"TRUST"_s);
        press(ending);
    }
    ASSERT_EQ(library.storedCodings().size(), 1);
    EXPECT_EQ(library.storedCodings().first().range(), (TextRange{0, 4}));
    EXPECT_EQ(library.storedCodings().first().codeID, library.code(u"Trusting"_s).id);
    EXPECT_EQ(library.store.codes()->size(), 2);
    EXPECT_TRUE(text().hasFocus()); // where the gesture began
    EXPECT_FALSE(find(u"selectionBar"_s).isVisible());
}
