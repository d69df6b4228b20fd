#include "ThemedTest.h"

#include "workspace/theme/FocusRing.h"
#include "workspace/theme/Metrics.h"
#include "workspace/theme/Roles.h"
#include "workspace/theme/RowPainter.h"
#include "workspace/theme/Symbols.h"
#include "workspace/theme/ThemeColors.h"

#include <QComboBox>
#include <QFocusFrame>
#include <QHBoxLayout>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QTest>
#include <QTextEdit>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

struct ThumbCase {
    const char *name;
    int minimum;
    int maximum;
    int page;
    int position;
    int length; ///< of the bar
    QRect expected;
};

class ScrollThumb : public ThemedTest, public testing::WithParamInterface<ThumbCase> { };

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

QPushButton *button(QWidget &parent, ButtonRole role)
{
    auto *result = new QPushButton(u"Run Query"_s, &parent);
    setRole(*result, role);
    return result;
}

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

TEST_P(ScrollThumb, LiesInItsGroove)
{
    const ThumbCase &row = GetParam();
    QStyleOptionSlider option;
    option.orientation = Qt::Vertical;
    option.rect = QRect(0, 0, 12, row.length);
    option.minimum = row.minimum;
    option.maximum = row.maximum;
    option.pageStep = row.page;
    option.sliderPosition = row.position;
    const QRect thumb =
        m_window.style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, nullptr);
    EXPECT_EQ(thumb, row.expected);
}

INSTANTIATE_TEST_SUITE_P(Ranges, ScrollThumb,
    testing::Values(ThumbCase{"half_of_the_text_at_its_top", 0, 100, 100, 0, 206, {0, 3, 12, 100}},
        ThumbCase{"half_of_the_text_at_its_end", 0, 100, 100, 100, 206, {0, 103, 12, 100}},
        ThumbCase{"long_text_keeps_a_thumb_to_hold", 0, 1'000'000, 100, 0, 206, {0, 3, 12, 32}},
        ThumbCase{"nothing_to_scroll", 0, 0, 100, 0, 206, {0, 3, 12, 200}},
        ThumbCase{"whole_range_of_int", lowest, highest, highest, lowest, 206, {0, 3, 12, 66}},
        ThumbCase{"bar_shorter_than_its_thumb", 0, 1000, 10, 500, 20, {0, 3, 12, 14}},
        ThumbCase{"bar_without_room", 0, 1000, 10, 500, 4, {0, 3, 12, 0}}),
    rowName);

TEST_F(ThemedTest, ScrollBarsHaveNoArrows)
{
    QScrollBar bar;
    QStyleOptionSlider option;
    option.initFrom(&bar);
    for (const QStyle::SubControl arrow : {QStyle::SC_ScrollBarAddLine, QStyle::SC_ScrollBarSubLine})
        EXPECT_TRUE(bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, arrow, &bar).isEmpty());
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

TEST_F(ThemedTest, LayoutsCountAButtonWithoutItsShadow)
{
    QHBoxLayout row(&m_window);
    row.setContentsMargins(20, 20, 20, 20);
    row.setSpacing(8);
    QPushButton *first = button(m_window, ButtonRole::bordered);
    QPushButton *second = button(m_window, ButtonRole::prominent);
    row.addWidget(first);
    row.addWidget(second);
    row.addStretch();
    EXPECT_EQ(row.sizeHint().height(), Metrics::controlHeight + 40);
    showWindow();
    const auto body = [](const QPushButton *each) { return FocusRing::outlineOf(*each)->rect.translated(each->pos()); };
    EXPECT_EQ(body(first).left(), 20);
    EXPECT_EQ(body(second).left() - body(first).right(), 8);
    EXPECT_EQ(body(first).height(), Metrics::controlHeight);
}

TEST_F(ThemedTest, ButtonsArePaintedByTheirRole)
{
    const auto center = [this](ButtonRole role) {
        QPushButton *each = button(m_window, role);
        each->setText({});
        each->resize(60, 32);
        return each->grab().toImage().pixelColor(30, 10).name();
    };
    EXPECT_EQ(center(ButtonRole::prominent), Theme::accent.name());
    EXPECT_EQ(center(ButtonRole::destructive), Theme::colors().destructiveFill.name());
    EXPECT_EQ(center(ButtonRole::bordered), Theme::colors().control.name());
}

TEST_F(ThemedTest, AButtonTooNarrowForItsLabelElidesIt)
{
    QPushButton *each = button(m_window, ButtonRole::prominent);
    each->setText(u"WWWWWWWWWWWWWWWWWWWWWWWW"_s);
    each->resize(100, 32);
    const QImage image = each->grab().toImage();
    EXPECT_FALSE(hasPixel(image.copy(2, 4, 4, 20), Qt::white));
    EXPECT_FALSE(hasPixel(image.copy(94, 4, 4, 20), Qt::white));
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
    QPushButton *first = button(m_window, ButtonRole::bordered);
    QPushButton *second = button(m_window, ButtonRole::bordered);
    second->move(200, 0);
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

TEST_F(ThemedTest, OnlyDestructiveEntriesAreRed)
{
    QMenu menu;
    menu.addAction(u"Rename"_s);
    const auto isRed = [&menu] {
        menu.adjustSize();
        const QImage image = menu.grab().toImage();
        int red = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                red += image.pixelColor(x, y).red() - image.pixelColor(x, y).green() > 60 ? 1 : 0;
        }
        return red > 10;
    };
    EXPECT_FALSE(isRed());
    setDestructive(*menu.addAction(u"Delete IIII"_s));
    EXPECT_TRUE(isRed());
}

TEST_F(ThemedTest, MenusShowTheDotsOfColours)
{
    QMenu menu;
    menu.addAction(Symbols::dot(QColor(0xFF, 0x2D, 0x55)), u"Pink"_s);
    EXPECT_TRUE(hasPixel(menu.grab().toImage(), QColor(0xFF, 0x2D, 0x55)));
}

TEST_F(ThemedTest, AnOrdinaryPopUpButtonHasRoomForItsLongestText)
{
    QComboBox box;
    box.addItems({u"a"_s, u"Interview — Participant A (excerpt)"_s});
    QStyleOptionComboBox option;
    option.initFrom(&box);
    option.rect = QRect(QPoint(), box.sizeHint());
    const QRect room = box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
    EXPECT_GE(room.width(), QFontMetricsF(box.font()).horizontalAdvance(box.itemText(1)));
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
    const auto isTinted = [&](RowState state, const QColor &tint) {
        const QColor shown = painted(state).pixelColor(50, 15);
        const QColor expected = mixed(Qt::white, tint);
        constexpr int rounding = 1; // the painter blends in whole numbers
        return std::abs(shown.red() - expected.red()) <= rounding
            && std::abs(shown.green() - expected.green()) <= rounding
            && std::abs(shown.blue() - expected.blue()) <= rounding;
    };
    const ThemeColors &colors = Theme::colors();
    EXPECT_TRUE(isTinted({}, Qt::transparent));
    EXPECT_TRUE(isTinted({.isHovered = true}, colors.hover));
    EXPECT_TRUE(isTinted({.isSelected = true, .isHovered = true}, colors.quietSelection));
    EXPECT_TRUE(isTinted({.isSelected = true, .listHasFocus = true}, colors.selection));
    EXPECT_EQ(painted({.isSelected = true}).pixelColor(4, 15), Qt::white) << "the fill is inset";
    EXPECT_TRUE(hasPixel(painted({.isCurrent = true}), colors.accentForeground));
    EXPECT_FALSE(hasPixel(painted({.isSelected = true, .isCurrent = true}), colors.accentForeground));
}
