#include "ThemedTest.h"

#include "kit/controls/Paragraph.h"
#include "kit/controls/Transition.h"
#include "kit/theme/Fonts.h"

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

TEST_F(ThemedTest, AWidgetThatComesAndGoesLeavesNothingBehind)
{
    showWindow();
    QWidget widget(&m_window);
    const auto isAlone = [&] { return m_window.findChildren<QWidget *>().size() == 1 && widget.mask().isEmpty(); };
    for (const bool isAnimated : {true, false}) {
        animate(isAnimated);
        widget.hide();
        Transition::banner(widget).appear(widget);
        EXPECT_TRUE(widget.isVisible()) << "at once";
        Transition::banner(widget).disappear(widget);
        EXPECT_FALSE(widget.isVisible());
        Transition::fade().appear(widget);
        EXPECT_TRUE(widget.isVisible());
        EXPECT_NE(isAlone(), isAnimated);
        EXPECT_TRUE(QTest::qWaitFor(isAlone));
        EXPECT_TRUE(widget.isVisible());
    }
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
