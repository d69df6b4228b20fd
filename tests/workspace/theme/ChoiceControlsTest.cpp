#include "ThemedTest.h"

#include "workspace/controls/ColumnSplitter.h"
#include "workspace/controls/SearchField.h"
#include "workspace/controls/SegmentedControl.h"
#include "workspace/controls/Stepper.h"
#include "workspace/controls/ToggleSwitch.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

struct KeyCase {
    const char *name;
    Qt::LayoutDirection direction;
    int from;
    Qt::Key key;
    int expected;
};

class SegmentKeys : public ThemedTest, public testing::WithParamInterface<KeyCase> { };
class StepperKeys : public ThemedTest, public testing::WithParamInterface<KeyCase> { };

constexpr Qt::LayoutDirection leftToRight = Qt::LeftToRight;
constexpr Qt::LayoutDirection rightToLeft = Qt::RightToLeft;

QString accessibleText(QObject &object, QAccessible::Text kind)
{
    return QAccessible::queryAccessibleInterface(&object)->text(kind);
}

} // namespace

TEST_P(SegmentKeys, MoveTheChoice)
{
    SegmentedControl control({u"Markdown"_s, u"CSV"_s, u"HTML"_s});
    control.setLayoutDirection(GetParam().direction);
    control.setCurrentIndex(GetParam().from);
    QTest::keyClick(&control, GetParam().key);
    EXPECT_EQ(control.currentIndex(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Keys, SegmentKeys,
    testing::Values(KeyCase{"right", leftToRight, 0, Qt::Key_Right, 1},
        KeyCase{"left", leftToRight, 1, Qt::Key_Left, 0},
        KeyCase{"right_stops_at_the_end", leftToRight, 2, Qt::Key_Right, 2},
        KeyCase{"left_stops_at_the_start", leftToRight, 0, Qt::Key_Left, 0},
        KeyCase{"right_is_back_in_mirrored_windows", rightToLeft, 1, Qt::Key_Right, 0},
        KeyCase{"down_is_forward_in_mirrored_windows_too", rightToLeft, 1, Qt::Key_Down, 2},
        KeyCase{"home", leftToRight, 2, Qt::Key_Home, 0}, KeyCase{"end", leftToRight, 0, Qt::Key_End, 2},
        KeyCase{"other_keys_leave_it", leftToRight, 1, Qt::Key_A, 1}),
    rowName);

TEST_F(ThemedTest, SegmentsAreChosenByClickAndAnnouncedOnce)
{
    SegmentedControl control({u"Any"_s, u"All"_s});
    control.resize(200, 28);
    const QSignalSpy changes(&control, &SegmentedControl::currentIndexChanged);
    QTest::mouseClick(&control, Qt::LeftButton, {}, control.segmentRect(1).center());
    QTest::mouseClick(&control, Qt::LeftButton, {}, control.segmentRect(1).center());
    EXPECT_EQ(control.currentIndex(), 1);
    EXPECT_EQ(changes.count(), 1);
    control.setCurrentIndex(7);
    control.setCurrentIndex(-1);
    EXPECT_EQ(control.currentIndex(), 1);
    EXPECT_EQ(accessibleText(control, QAccessible::Value), u"All"_s);
}

TEST_F(ThemedTest, SegmentsShareTheirRoomButLongLabelsGetTheirs)
{
    SegmentedControl control({u"A rather long label"_s, u"CSV"_s, u"HTML"_s});
    const int wide = control.sizeHint().width() * 2;
    control.resize(wide, 28);
    EXPECT_NEAR(control.segmentRect(0).width(), control.segmentRect(1).width(), 1);
    control.resize(control.sizeHint().width() * 7 / 10, 28);
    EXPECT_GE(control.segmentRect(0).width(), control.fontMetrics().horizontalAdvance(control.labels()[0]));
    EXPECT_LE(control.segmentRect(2).right(), control.rect().right());
    control.resize(30, 28);
    EXPECT_LE(control.segmentRect(2).right(), control.rect().right());
    control.setLayoutDirection(rightToLeft);
    EXPECT_GT(control.segmentRect(0).left(), control.segmentRect(2).left());
}

TEST_P(StepperKeys, StepWithinTheRange)
{
    Stepper stepper(1, 3);
    stepper.setLayoutDirection(GetParam().direction);
    stepper.setValue(GetParam().from);
    QTest::keyClick(&stepper, GetParam().key);
    EXPECT_EQ(stepper.value(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Keys, StepperKeys,
    testing::Values(KeyCase{"up", leftToRight, 1, Qt::Key_Up, 2}, KeyCase{"down", leftToRight, 2, Qt::Key_Down, 1},
        KeyCase{"right_from_the_minimum_is_one_step", leftToRight, 1, Qt::Key_Right, 2},
        KeyCase{"left_in_mirrored_windows_raises", rightToLeft, 1, Qt::Key_Left, 2},
        KeyCase{"up_stops_at_the_maximum", leftToRight, 3, Qt::Key_Up, 3},
        KeyCase{"down_stops_at_the_minimum", leftToRight, 1, Qt::Key_Down, 1}),
    rowName);

TEST_F(ThemedTest, AStepperRepeatsWhileItIsHeldAndStopsAtItsEnd)
{
    Stepper stepper(1, 3, &m_window);
    stepper.resize(stepper.sizeHint());
    showWindow();
    const QSignalSpy changes(&stepper, &Stepper::valueChanged);
    const QPoint raise(stepper.width() - 12, stepper.height() / 2);
    QTest::mousePress(&stepper, Qt::LeftButton, {}, raise);
    EXPECT_EQ(stepper.value(), 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stepper.value() == 3; }));
    QTest::mouseRelease(&stepper, Qt::LeftButton, {}, raise);
    EXPECT_EQ(changes.count(), 2);
    QTest::mouseClick(&stepper, Qt::LeftButton, {}, QPoint(12, stepper.height() / 2));
    EXPECT_EQ(stepper.value(), 2);
}

TEST_F(ThemedTest, AStepperOverTheWholeRangeDoesntOverflow)
{
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    Stepper stepper(lowest, highest);
    QTest::keyClick(&stepper, Qt::Key_Down);
    EXPECT_EQ(stepper.value(), lowest);
    stepper.setValue(highest);
    QTest::keyClick(&stepper, Qt::Key_Up);
    EXPECT_EQ(stepper.value(), highest);
    EXPECT_EQ(accessibleText(stepper, QAccessible::Value), QString::number(highest));
}

TEST_F(ThemedTest, ASwitchIsACheckBoxAndDiffersInShape)
{
    ToggleSwitch toggle;
    toggle.setAccessibleName(u"Ignore common words"_s);
    toggle.resize(toggle.sizeHint());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&toggle)->role(), QAccessible::CheckBox);
    const QImage off = toggle.grab().toImage().convertToFormat(QImage::Format_Grayscale8);
    QTest::mouseClick(&toggle, Qt::LeftButton, {}, QPoint(2, 10));
    EXPECT_TRUE(toggle.isChecked());
    const QImage on = toggle.grab().toImage().convertToFormat(QImage::Format_Grayscale8);
    const auto knobIsLeft = [](const QImage &image) { // the knob is where it doesn't look like the track above it
        const int track = qGray(image.pixel(17, 2));
        return std::abs(qGray(image.pixel(9, 10)) - track) > std::abs(qGray(image.pixel(25, 10)) - track);
    };
    EXPECT_TRUE(knobIsLeft(off));
    EXPECT_FALSE(knobIsLeft(on));
    QTest::keyClick(&toggle, Qt::Key_Space);
    EXPECT_FALSE(toggle.isChecked());
}

TEST_F(ThemedTest, ASearchFieldIsEmptiedByCrossAndEscape)
{
    SearchField field(u"Search documents"_s, &m_window);
    showWindow();
    auto *cross = field.findChild<QAbstractButton *>();
    ASSERT_NE(cross, nullptr);
    EXPECT_FALSE(cross->isVisible());
    field.setText(u"the long table"_s);
    ASSERT_TRUE(cross->isVisible());
    EXPECT_FALSE(cross->accessibleName().isEmpty());
    EXPECT_EQ(cross->focusPolicy(), Qt::NoFocus);
    QTest::mouseClick(cross, Qt::LeftButton);
    EXPECT_EQ(field.text(), QString());
    EXPECT_FALSE(cross->isVisible());
    field.setText(u"again"_s);
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(field.text(), QString());
}

TEST_F(ThemedTest, TheHairlineBetweenColumnsCanBeGrabbedBesideIt)
{
    ColumnSplitter splitter(&m_window);
    splitter.addWidget(new QWidget);
    splitter.addWidget(new QWidget);
    splitter.resize(400, 200);
    showWindow();
    QSplitterHandle *handle = splitter.handle(1);
    EXPECT_EQ(handle->contentsRect().width(), 1);
    EXPECT_EQ(handle->width(), 7);
    EXPECT_EQ(splitter.widget(1)->x() - splitter.widget(0)->geometry().right(), 2);
}
