#include "ThemedTest.h"

#include "kit/controls/SearchField.h"
#include "kit/controls/SegmentedControl.h"
#include "kit/controls/Stepper.h"
#include "kit/controls/ToggleSwitch.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

TEST_F(ThemedTest, SegmentsAreChosenByClickAndAnnouncedOnce)
{
    SegmentedControl control({u"Any"_s, u"All"_s});
    control.resize(200, 28);
    const QSignalSpy changes(&control, &SegmentedControl::currentIndexChanged);
    for (int time = 0; time < 2; ++time)
        QTest::mouseClick(&control, Qt::LeftButton, {}, control.segmentRect(1).center());
    control.setCurrentIndex(7);
    control.setCurrentIndex(-1);
    EXPECT_EQ(control.currentIndex(), 1);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&control)->text(QAccessible::Value), u"All"_s);
}

TEST_F(ThemedTest, AStepperRepeatsWhileItIsHeldAndStopsAtItsEnd)
{
    Stepper stepper(1, 3, &m_window);
    stepper.resize(stepper.sizeHint());
    showWindow();
    const QPoint raise(stepper.width() - 12, stepper.height() / 2);
    QTest::mousePress(&stepper, Qt::LeftButton, {}, raise);
    EXPECT_EQ(stepper.value(), 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stepper.value() == 3; }));
    QTest::mouseRelease(&stepper, Qt::LeftButton, {}, raise);
    QTest::mouseClick(&stepper, Qt::LeftButton, {}, QPoint(12, stepper.height() / 2));
    EXPECT_EQ(stepper.value(), 2);
}

TEST_F(ThemedTest, ASwitchIsACheckBoxAndDiffersWithoutItsColour)
{
    ToggleSwitch toggle;
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
    auto &cross = *field.findChild<QAbstractButton *>();
    EXPECT_FALSE(cross.isVisible());
    field.setText(u"the long table"_s);
    ASSERT_TRUE(cross.isVisible());
    EXPECT_FALSE(cross.accessibleName().isEmpty());
    EXPECT_EQ(cross.focusPolicy(), Qt::NoFocus);
    QTest::mouseClick(&cross, Qt::LeftButton);
    EXPECT_EQ(field.text(), QString());
    EXPECT_FALSE(cross.isVisible());
    field.setText(u"again"_s);
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(field.text(), QString());
}
