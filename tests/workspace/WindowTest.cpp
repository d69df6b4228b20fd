#include "ShownWindow.h"
#include "kit/controls/Alert.h"
#include "kit/theme/Metrics.h"
#include "platform/AtomicFile.h"
#include "records/database/Database.h"
#include "records/database/DatabaseQueue.h"
#include "workspace/StatusBanner.h"
#include "workspace/lists/DocumentListView.h"
#include "workspace/picker/CodePickerPopover.h"
#include "workspace/sidebar/SidebarView.h"

#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QUrl>

using namespace Qt::StringLiterals;

using Window = ShownWindow;

TEST_F(Window, ItsColumnsKeepTheirLimitsWhateverTheNames)
{
    library.makeCodes({u"A name that goes on and on, "_s.repeated(11)});
    library.paste(u"A"_s, u"some words"_s);
    open();
    for (const QString &title : {u"W"_s.repeated(300), u"long words "_s.repeated(2900)}) {
        library.store.renameDocument(library.store.documents()->first(), title);
        for (const QSize size : {QSize(2560, 1440), QSize(500, 300), QSize(1180, 780)}) {
            root().resize(size);
            settle();
            EXPECT_EQ(root().size().expandedTo({900, 600}), size.expandedTo({900, 600}));
            const int sidebar = find<SidebarView>().width();
            EXPECT_TRUE(sidebar >= 185 && sidebar <= 280) << sidebar;
            const int list = find<DocumentListView>().width();
            EXPECT_TRUE(list >= ListMetrics::minColumnWidth && list <= ListMetrics::maxColumnWidth) << list;
        }
        EXPECT_GE(text().height(), 200) << title.size();
    }
}

TEST_F(Window, ThePickerStaysInsideAndClosesAtAClickAndAtFinding)
{
    library.paste(u"A"_s, u"some words to code"_s);
    open();
    drag(0, 4);
    for (const bool isByClick : {true, false}) {
        click(u"addCode"_s);
        for (const QSize size : {QSize(1600, 900), QSize(500, 300)}) {
            root().resize(size);
            settle();
            const QRect body = find<CodePickerPopover>().bodyInWindow();
            const QPoint button = find(u"addCode"_s).mapTo(&root(), QPoint());
            EXPECT_TRUE(root().rect().contains(body) && body.bottom() < button.y()) << size.width();
            EXPECT_TRUE(body.left() < button.x() && button.x() < body.right()) << size.width();
        }
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
    const Document other = library.paste(u"B"_s, u"some words\n"_s.repeated(300) + u"the table"_s);
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

/// A library that no Vorn has written.
TEST_F(Window, ShowsWhatItCanOfAHostileLibraryAndGoesOnWorking)
{
    LibraryStore &store = library.store;
    const Code alpha = library.makeCodes({u"Alpha"_s}).first();
    const Document document = library.paste(u"First"_s, u"trust grows slowly, and goes quickly\n"_s.repeated(50));
    store.assignCode(alpha, document, {0, 5});
    const auto codes = [](const QByteArray &id, const QByteArray &parent) {
        return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10000) INSERT INTO code (id, "
               "projectID, name, colorHex, parentID, createdAt) SELECT CAST(printf('"
            + id + "', i) AS BLOB), (SELECT id FROM project), 'code ' || i, '#112233', " + parent
            + ", '9999-12-31 23:59:59.999' FROM n";
    };
    QByteArrayList statements{codes("%016d", "CASE WHEN i > 1 THEN CAST(printf('%016d', i - 1) AS BLOB) END"),
        codes("%015dc", "CAST(printf('%015dc', i % 10000 + 1) AS BLOB)"), // a cycle
        "UPDATE code SET name = replace(hex(zeroblob(3000)), '00', 'x ' || char(0, 10)), colorHex = name WHERE rowid < "
        "5",
        "UPDATE document SET title = hex(zeroblob(3000)), memo = hex(zeroblob(100000)), addedAt = '0001-01-01', "
        "wordCount = -9223372036854775807 - 1, charCount = 9223372036854775807",
        "UPDATE project SET name = char(0x202E) || hex(zeroblob(3000))"};
    for (const char *range : {"-5, 9", "9223372036854775807, 9223372036854775807", "3, 9223372036854775807",
             "-9223372036854775807 - 1, -1", "1849, 99", "1850, 1", "4, 0"})
        statements.append(QByteArray("INSERT INTO coding SELECT randomblob(16), documentID, codeID, ") + range
            + ", createdAt FROM coding");
    library.queue->write([&](Database &database) {
        std::ranges::for_each(statements, [&](const QByteArray &statement) { database.execute(statement); });
    });
    store.refresh();
    open();
    store.runQuery({{alpha.id}, QuerySpec::Mode::any, {}});
    store.runWordFrequency(WordFrequency::InCode{alpha.id}, 3, true, 50);
    store.selectWordFreqTerm(u"trust"_s);
    settle();
    store.sidebarSelection().set(CodeSelection{alpha.id});
    store.reveal(ExcerptHit(store.excerpts(alpha.id).first()));
    settle();
    EXPECT_FALSE(root().grab().isNull());
    EXPECT_GE(find<QAbstractItemView>(u"sidebarList"_s).model()->rowCount(), store.codes()->size());
    drag(0, 5);
    const Code last = store.codes()->last();
    store.assignCode(last, document, text().selection());
    settle();
    EXPECT_EQ(store.codeCounts()->value(last.id), 1);
}
