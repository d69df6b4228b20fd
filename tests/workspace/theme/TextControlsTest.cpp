#include "ThemedTest.h"

#include "workspace/controls/ElidedLabel.h"
#include "workspace/controls/Paragraph.h"
#include "workspace/controls/Transition.h"
#include "workspace/theme/Fonts.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int line = 18;

} // namespace

TEST_F(ThemedTest, AParagraphBreaksAWordThatIsWiderThanItself)
{
    const Paragraph paragraph(u"W"_s.repeated(400), Fonts::body(), Symbols::Tint::text, line);
    EXPECT_GT(paragraph.heightForWidth(100), 10 * line);
    EXPECT_GT(paragraph.heightForWidth(1), 100 * line);
    EXPECT_GE(paragraph.heightForWidth(0), line);
}

TEST_F(ThemedTest, AnElidedLabelNeverElidesWhatHasItsRoom)
{
    for (const QFont &font : {Fonts::callout(), Fonts::body(), Fonts::caption(), Fonts::readerTitle()}) {
        ElidedLabel label(u"Imported 3 documents"_s, font, Symbols::Tint::text);
        label.resize(label.sizeHint());
        EXPECT_FALSE(label.isElided());
        label.resize(label.width() - 2, label.height());
        EXPECT_TRUE(label.isElided());
    }
}

TEST_F(ThemedTest, AnAnimatedWidgetIsThereAtOnceAndLeavesNothingBehind)
{
    animate(true);
    showWindow();
    QWidget widget(&m_window);
    widget.hide();
    Transition::banner(widget).appear(widget);
    EXPECT_TRUE(widget.isVisible());
    EXPECT_EQ(m_window.findChildren<QWidget *>().size(), 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return widget.mask().isEmpty(); }));
    EXPECT_EQ(m_window.findChildren<QWidget *>().size(), 1);
    Transition::banner(widget).disappear(widget);
    EXPECT_FALSE(widget.isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_window.findChildren<QWidget *>().size() == 1; }));
}

TEST_F(ThemedTest, WithoutAnimationsOnlyTheFinalStateShows)
{
    showWindow();
    QWidget widget(&m_window);
    widget.hide();
    Transition::fade().appear(widget);
    EXPECT_TRUE(widget.isVisible() && widget.mask().isEmpty());
    Transition::fade().disappear(widget);
    EXPECT_FALSE(widget.isVisible());
    EXPECT_EQ(m_window.findChildren<QWidget *>().size(), 1);
}

TEST_F(ThemedTest, AWidgetThatGoesAndComesBackAtOnceIsSeen)
{
    animate(true);
    showWindow();
    QWidget widget(&m_window);
    widget.hide();
    Transition::fade().appear(widget);
    Transition::fade().disappear(widget);
    Transition::fade().appear(widget);
    EXPECT_TRUE(widget.isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_window.findChildren<QWidget *>().size() == 1; }));
    EXPECT_TRUE(widget.mask().isEmpty());
}

TEST_F(ThemedTest, AWidgetMayBeDeletedOnItsWay)
{
    animate(true);
    showWindow();
    auto *widget = new QWidget(&m_window);
    widget->hide();
    Transition::fade().appear(*widget);
    delete widget;
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_window.findChildren<QWidget *>().isEmpty(); }));
}
