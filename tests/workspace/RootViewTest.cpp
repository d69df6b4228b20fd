#include "ShownWindow.h"
#include "workspace/StatusBanner.h"
#include "workspace/reader/SelectionBar.h"

#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

using namespace Qt::StringLiterals;

using Window = ShownWindow;

TEST_F(Window, CodesADraggedPassageWithANewNameAndReturn)
{
    const QString passage = u"😀 behind\r\nit"_s;
    QString content = u"Before\r\n\u2028and "_s + passage + u" and after.\n"_s;
    content += u"line\n"_s.repeated(200);
    library.paste(u"A"_s, content);
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
}

TEST_F(Window, AnotherDocumentBeginsAnewAndARevealOpensItsPassage)
{
    const Document first = library.paste(u"first"_s, u"some words\n"_s.repeated(300) + u"the end"_s);
    library.paste(u"second"_s, u"other words"_s);
    const Code code = library.makeCodes({u"One"_s}).first();
    library.store.assignCode(code, first, {first.text.size() - 7, 7});
    open();
    drag(0, 5);
    EXPECT_TRUE(find<SelectionBar>().isVisible());
    library.store.reveal(library.store.excerpts(code.id).first());
    QApplication::processEvents();
    EXPECT_EQ(text().text(), first.text);
    EXPECT_FALSE(find<SelectionBar>().isVisible());
    const QRect end = text().characterRectangle(first.text.size() - 1);
    EXPECT_TRUE(text().viewport()->rect().contains(end.center()));
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
    library.store.statusMessage().set({});
    EXPECT_FALSE(root().banner().isVisible());
}
