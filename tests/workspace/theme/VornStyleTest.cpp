#include "ThemedTest.h"

#include "workspace/theme/FocusRing.h"
#include "workspace/theme/RowPainter.h"
#include "workspace/theme/ThemeColors.h"

#include <QFocusFrame>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QTest>
#include <QTextEdit>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

bool hasPixel(const QImage &image, const QColor &color)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).name() == color.name())
                return true;
        }
    }
    return false;
}

const QFocusFrame *focusFrame(const QWidget &window)
{
    const auto *frame = window.findChild<QFocusFrame *>();
    return frame != nullptr && frame->widget() != nullptr ? frame : nullptr;
}

} // namespace

TEST_F(ThemedTest, AThumbLiesInItsGrooveWhateverTheRange)
{
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    const auto thumb = [this](int minimum, int maximum, int page, int position, int length) {
        QStyleOptionSlider option;
        option.orientation = Qt::Vertical;
        option.rect = QRect(0, 0, 12, length);
        option.minimum = minimum;
        option.maximum = maximum;
        option.pageStep = page;
        option.sliderPosition = position;
        return m_window.style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, nullptr);
    };
    EXPECT_EQ(thumb(0, 100, 100, 100, 206), QRect(0, 103, 12, 100)) << "half of the text at its end";
    EXPECT_EQ(thumb(0, 1'000'000, 100, 0, 206).height(), 32) << "there is a thumb to hold";
    EXPECT_EQ(thumb(0, 0, 100, 0, 206).height(), 200) << "nothing to scroll";
    EXPECT_EQ(thumb(lowest, highest, highest, lowest, 206).height(), 66);
    EXPECT_EQ(thumb(0, 1000, 10, 500, 20).height(), 14) << "a bar shorter than its thumb";
    EXPECT_EQ(thumb(0, 1000, 10, 500, 4).height(), 0);
}

TEST_F(ThemedTest, AScrollBarShowsItsThumbWhileItScrollsOnly)
{
    QTextEdit edit(&m_window);
    edit.setPlainText(u"line\n"_s.repeated(200));
    edit.setGeometry(300, 300, 200, 200); // away from the mouse
    showWindow();
    QScrollBar *bar = edit.verticalScrollBar();
    const auto isShown = [bar] {
        QImage image(bar->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        bar->render(&image, {}, {}, QWidget::DrawChildren);
        return hasPixel(image, mixed(Qt::white, Theme::colors().scrollThumb));
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return !isShown(); })) << "the first layout may scroll";
    bar->setValue(bar->maximum() / 2);
    EXPECT_TRUE(isShown());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isShown(); }));
    Theme::setLook({false, true});
    EXPECT_TRUE(isShown());
}

TEST_F(ThemedTest, LargerFontsMakeHigherControls)
{
    QLineEdit field;
    QFont large = field.font();
    large.setPointSizeF(30);
    field.setFont(large);
    EXPECT_GE(field.sizeHint().height(), QFontMetrics(large).height() + 12);
}

TEST_F(ThemedTest, TheRingComesWithTheKeyboardAndGoesWithTheMouse)
{
    auto *first = new QPushButton(&m_window);
    auto *second = new QPushButton(&m_window);
    showWindow();
    second->setFocus(Qt::OtherFocusReason); // so that the first one has to take it
    first->setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(focusFrame(m_window), nullptr);
    QTest::keyClick(first, Qt::Key_Tab);
    ASSERT_NE(focusFrame(m_window), nullptr);
    EXPECT_EQ(focusFrame(m_window)->widget(), second);
    EXPECT_TRUE(FocusRing::isDueTo(*second));
    first->setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(focusFrame(m_window), nullptr);
}

TEST_F(ThemedTest, AFieldShowsItsFocusHoweverItCame)
{
    QLineEdit field(&m_window);
    QLineEdit inRow(&m_window);
    inRow.setFrame(false);
    QListWidget list(&m_window);
    showWindow();
    field.setFocus(Qt::MouseFocusReason);
    ASSERT_NE(focusFrame(m_window), nullptr);
    inRow.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(focusFrame(m_window), nullptr) << "an editor within a row has no halo";
    list.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(focusFrame(m_window), nullptr) << "a list shows its focus by its rows";
}

TEST_F(ThemedTest, ARowTellsSelectionHoverAndTheKeyboard)
{
    const auto painted = [](RowState state) {
        QImage image(100, 30, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        RowPainter(8, 6).paint(painter, QRectF(0, 0, 100, 30), state);
        painter.end();
        return image;
    };
    const QList<QImage> states{painted({}), painted({.isHovered = true}), painted({.isSelected = true}),
        painted({.isSelected = true, .listHasFocus = true}), painted({.isCurrent = true})};
    for (qsizetype first = 0; first < states.size(); ++first) {
        for (qsizetype second = 0; second < first; ++second)
            EXPECT_NE(states[first], states[second]) << first << " and " << second << " look the same";
    }
    EXPECT_EQ(states[2].pixelColor(4, 15), Qt::white) << "the fill is inset";
    EXPECT_EQ(painted({.isSelected = true, .isCurrent = true}), states[2]) << "a selected row needs no ring";
}
