#include "ShownWindow.h"
#include "workspace/StatusBanner.h"
#include "workspace/controls/Alert.h"
#include "workspace/reader/SelectionBar.h"
#include "workspace/results/QueryResultsView.h"

#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextEdit>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using Window = ShownWindow;

TEST_F(Window, CodesADraggedPassageWithANewNameAndReturn)
{
    const QString passage = u"😀 behind\r\nit"_s;
    QString content = u"Before\r\n\u2028and "_s + passage + u" and after.\n"_s;
    content += u"line\n"_s.repeated(200);
    const Document document = library.paste(u"A"_s, content);
    open();
    const qint64 start = content.indexOf(passage);
    text().verticalScrollBar()->setValue(7);
    drag(start, start + passage.size());
    auto &bar = find<SelectionBar>();
    ASSERT_TRUE(bar.isVisible());
    EXPECT_EQ(text().selection(), (TextRange{start, passage.size()}));

    const int scrolled = text().verticalScrollBar()->value();
    QTest::mouseClick(&bar.addButton(), Qt::LeftButton);
    auto &field = find<QLineEdit>(u"pickerField"_s);
    EXPECT_TRUE(field.hasFocus());
    EXPECT_EQ(text().selection().length, passage.size()); // still shown as selected
    QTest::keyClicks(&field, u" Feelings "_s);
    QTest::keyClick(&field, Qt::Key_Return);
    QApplication::processEvents();

    ASSERT_EQ(library.storedCodings().size(), 1);
    EXPECT_EQ(library.storedCodings().first().range(), (TextRange{start, passage.size()}));
    EXPECT_EQ(library.code(u"Feelings"_s).id, library.storedCodings().first().codeID);
    EXPECT_FALSE(bar.isVisible());
    EXPECT_EQ(text().selection().length, 0);
    EXPECT_EQ(text().verticalScrollBar()->value(), scrolled);
    EXPECT_TRUE(find<QWidget>(u"documentFacts"_s).isVisible());
}

TEST_F(Window, ReturnTakesTheFirstCodeOfAnExactNameAndEscapeKeepsThePassage)
{
    library.makeCodes({u"Trusting"_s, u"trust"_s});
    library.paste(u"A"_s, u"some words to code"_s);
    open();
    drag(0, 4);
    QTest::mouseClick(&find<SelectionBar>().addButton(), Qt::LeftButton);
    QTest::keyClick(&find<QLineEdit>(u"pickerField"_s), Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_TRUE(find<SelectionBar>().isVisible()); // the passage is still there to be coded
    EXPECT_TRUE(library.storedCodings().isEmpty());

    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTest::mouseClick(&find<SelectionBar>().addButton(), Qt::LeftButton);
    auto &field = find<QLineEdit>(u"pickerField"_s);
    QTest::keyClicks(&field, u"TRUST"_s);
    QTest::keyClick(&field, Qt::Key_Return);
    ASSERT_EQ(library.storedCodings().size(), 1);
    EXPECT_EQ(library.storedCodings().first().codeID, library.code(u"Trusting"_s).id);
    EXPECT_EQ(library.store.codes()->size(), 2);
}

TEST_F(Window, AnotherDocumentBeginsAnewAndARevealOpensItsPassage)
{
    const Document first = library.paste(u"first"_s, u"some words\n"_s.repeated(300) + u"the end"_s);
    const Document second = library.paste(u"second"_s, u"other words"_s);
    const Code code = library.makeCodes({u"One"_s}).first();
    library.store.assignCode(code, first, {first.text.size() - 7, 7});
    open();
    EXPECT_EQ(text().text(), second.text);
    drag(0, 5);
    EXPECT_TRUE(find<SelectionBar>().isVisible());
    library.store.reveal(library.store.excerpts(code.id).first());
    QApplication::processEvents();
    EXPECT_EQ(text().text(), first.text);
    EXPECT_FALSE(find<SelectionBar>().isVisible());
    const QRect end = text().characterRectangle(first.text.size() - 1);
    EXPECT_TRUE(text().viewport()->rect().contains(end.center()));
    EXPECT_EQ(find<QTextEdit>(u"documentTitle"_s).toPlainText(), u"first"_s);
}

TEST_F(Window, FindBarGoesRoundThroughItsMatchesAndEscapeClosesIt)
{
    library.paste(u"A"_s, u"Table one, table two, TABLE three"_s);
    open();
    QTest::keyClick(&root(), Qt::Key_F, Qt::ControlModifier);
    root().openFindBar();
    auto &field = find<QLineEdit>(u"findField"_s);
    EXPECT_TRUE(field.hasFocus());
    QTest::keyClicks(&field, u"table"_s);
    EXPECT_EQ(text().findMatches().size(), 3U);
    EXPECT_EQ(text().selection(), (TextRange{0, 5}));
    QTest::keyClick(&field, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(text().selection(), (TextRange{22, 5}));
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(text().selection(), (TextRange{0, 5}));
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_FALSE(find<QWidget>(u"findBar"_s).isVisible());
    EXPECT_TRUE(text().findMatches().empty());
}

TEST_F(Window, BannerStaysFourSecondsAndOneThatReplacedItStays)
{
    open();
    std::vector<std::pair<std::chrono::milliseconds, std::function<void()>>> jobs;
    root().banner().setRunLater(
        [&](std::chrono::milliseconds delay, std::function<void()> job) { jobs.emplace_back(delay, std::move(job)); });
    library.store.statusMessage().set(u"Done"_s);
    EXPECT_TRUE(root().banner().isVisible());
    ASSERT_EQ(jobs.size(), 1U);
    EXPECT_EQ(jobs[0].first, std::chrono::seconds(4));
    library.store.statusMessage().set(u"Done again"_s);
    jobs[0].second();
    EXPECT_TRUE(root().banner().isVisible());
    EXPECT_EQ(jobs.size(), 1U); // a new text gets no time of its own
    library.store.statusMessage().set({});
    EXPECT_FALSE(root().banner().isVisible());
}

TEST_F(Window, ErrorsShowUntilTheyAreDismissedOneAfterTheOther)
{
    open();
    library.store.lastError().set(u"first"_s);
    auto *alert = root().findChild<Alert *>();
    ASSERT_NE(alert, nullptr);
    library.store.lastError().set(u"second"_s);
    QTest::keyClick(alert, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(library.store.lastError().get(), u"second"_s);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    alert = root().findChild<Alert *>();
    ASSERT_NE(alert, nullptr);
    QTest::keyClick(alert, Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_EQ(library.store.lastError().get(), std::nullopt);
}

TEST_F(Window, ImportButtonRestsDuringAnImport)
{
    open();
    auto &button = find<QPushButton>(u"import"_s);
    QList<bool> states;
    QObject::connect(
        &library.store.isImporting(), &Notifier::changed, &button, [&] { states.append(button.isEnabled()); });
    library.store.importURLs({});
    EXPECT_EQ(states, (QList<bool>{false, true}));
}

TEST_F(Window, TheResultsOfAQueryTakeTheMiddleAndItsWidth)
{
    const Document document = library.paste(u"A"_s, u"some words to code"_s);
    const Code code = library.makeCodes({u"One"_s}).first();
    library.store.assignCode(code, document, {0, 4});
    open();
    const QWidget &results = find<QueryResultsView>();
    EXPECT_FALSE(results.isVisible());
    library.store.runQuery({.codeIDs = {code.id}, .mode = QuerySpec::Mode::any, .textFilter = {}});
    QApplication::processEvents();
    EXPECT_TRUE(results.isVisible());
    EXPECT_EQ(results.width(), results.parentWidget()->width());
    library.store.goToDocuments();
    EXPECT_FALSE(results.isVisible());
}
