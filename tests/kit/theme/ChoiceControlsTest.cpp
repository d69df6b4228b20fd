#include "ThemedTest.h"

#include "kit/controls/SearchField.h"
#include "kit/controls/SegmentedControl.h"
#include "kit/controls/Stepper.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QCheckBox>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

TEST_F(ThemedTest, SegmentsAreChosenByClickAndAnnouncedOnce)
{
    SegmentedControl control({u"Any"_s, u"All"_s});
    control.resize(200, 28);
    const QSignalSpy changes(&control, &SegmentedControl::currentChanged);
    for (int time = 0; time < 2; ++time)
        QTest::mouseClick(&control, Qt::LeftButton, {}, control.tabRect(1).center());
    control.setCurrentIndex(7);
    control.setCurrentIndex(-1);
    EXPECT_EQ(control.currentIndex(), 1);
    EXPECT_EQ(changes.count(), 1);
    QAccessibleInterface *segment = QAccessible::queryAccessibleInterface(&control)->child(1);
    EXPECT_EQ(segment->text(QAccessible::Name), u"All"_s);
    EXPECT_TRUE(segment->state().focused) << "what a screen reader takes for the chosen one";
    for (const auto &[key, index] : std::initializer_list<std::pair<Qt::Key, int>>{
             {Qt::Key_Left, 0}, {Qt::Key_Up, 0}, {Qt::Key_Down, 1}, {Qt::Key_Home, 0}, {Qt::Key_End, 1}}) {
        QTest::keyClick(&control, key);
        EXPECT_EQ(control.currentIndex(), index);
    }
    control.setLabels({u"Any"_s});
    EXPECT_EQ(control.currentIndex(), 0);
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
    for (const auto &[key, value] : std::initializer_list<std::pair<Qt::Key, int>>{
             {Qt::Key_Right, 3}, {Qt::Key_Left, 2}, {Qt::Key_1, 2}, {Qt::Key_Down, 1}, {Qt::Key_Down, 1}}) {
        QTest::keyClick(&stepper, key);
        EXPECT_EQ(stepper.value(), value);
    }
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&stepper);
    EXPECT_EQ(accessible->role(), QAccessible::SpinBox);
    EXPECT_EQ(accessible->valueInterface()->currentValue(), 1);
}

TEST_F(ThemedTest, ASwitchIsACheckBoxAndDiffersWithoutItsColour)
{
    QCheckBox toggle;
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
    auto &cross = *field.findChildren<QAbstractButton *>().last();
    EXPECT_FALSE(cross.isVisible());
    field.setText(u"the long table"_s);
    ASSERT_TRUE(cross.isVisible());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&cross)->text(QAccessible::Name), u"Clear search"_s);
    EXPECT_EQ(cross.focusPolicy(), Qt::NoFocus);
    QTest::mouseClick(&cross, Qt::LeftButton);
    EXPECT_EQ(field.text(), QString());
    EXPECT_FALSE(cross.isVisible());
    field.setText(u"again"_s);
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(field.text(), QString());
}
