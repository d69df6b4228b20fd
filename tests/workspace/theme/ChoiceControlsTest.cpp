#include "ThemedTest.h"

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
    testing::Values(KeyCase{"right_stops_at_the_end", leftToRight, 2, Qt::Key_Right, 2},
        KeyCase{"left_stops_at_the_start", leftToRight, 0, Qt::Key_Left, 0},
        KeyCase{"right_is_back_in_mirrored_windows", rightToLeft, 1, Qt::Key_Right, 0},
        KeyCase{"down_is_forward_in_mirrored_windows_too", rightToLeft, 1, Qt::Key_Down, 2},
        KeyCase{"home", leftToRight, 2, Qt::Key_Home, 0}, KeyCase{"end", leftToRight, 0, Qt::Key_End, 2}),
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

TEST_P(StepperKeys, StepWithinTheRange)
{
    Stepper stepper(1, 3);
    stepper.setLayoutDirection(GetParam().direction);
    stepper.setValue(GetParam().from);
    QTest::keyClick(&stepper, GetParam().key);
    EXPECT_EQ(stepper.value(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Keys, StepperKeys,
    testing::Values(KeyCase{"right_from_the_minimum_is_one_step", leftToRight, 1, Qt::Key_Right, 2},
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
    for (const auto &[end, key] :
        {std::pair{std::numeric_limits<int>::min(), Qt::Key_Down}, {std::numeric_limits<int>::max(), Qt::Key_Up}}) {
        Stepper stepper(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
        stepper.setValue(end);
        QTest::keyClick(&stepper, key);
        EXPECT_EQ(accessibleText(stepper, QAccessible::Value), QString::number(end));
    }
}

TEST_F(ThemedTest, ASwitchIsACheckBoxAndDiffersWithoutItsColour)
{
    ToggleSwitch toggle;
    toggle.setAccessibleName(u"Ignore common words"_s);
    toggle.resize(toggle.sizeHint());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&toggle)->role(), QAccessible::CheckBox);
    const auto shape = [&toggle] { return toggle.grab().toImage().convertToFormat(QImage::Format_Grayscale8); };
    const QImage off = shape();
    QTest::mouseClick(&toggle, Qt::LeftButton, {}, QPoint(2, 10));
    EXPECT_TRUE(toggle.isChecked());
    EXPECT_NE(shape(), off);
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
