#include "ThemedTest.h"

#include "kit/theme/FocusRing.h"

#include <QFocusFrame>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

const QFocusFrame *focusFrame(const QWidget &window)
{
    const auto *frame = window.findChild<QFocusFrame *>();
    return frame != nullptr && frame->widget() != nullptr ? frame : nullptr;
}

} // namespace

TEST_F(ThemedTest, LargerFontsMakeHigherControls)
{
    QLineEdit field;
    QFont large = field.font();
    large.setPointSizeF(30);
    field.setFont(large);
    EXPECT_GE(field.sizeHint().height(), QFontMetrics(large).height() + 12);
}

TEST_F(ThemedTest, TheRingComesWithTheKeyboardAndAFieldShowsItsFocusHoweverItCame)
{
    QPushButton first(&m_window);
    QPushButton second(&m_window);
    QLineEdit field(&m_window);
    QLineEdit inRow(&m_window);
    inRow.setFrame(false);
    QListWidget list(&m_window);
    showWindow();
    second.setFocus(Qt::OtherFocusReason); // so that the first one has to take it
    first.setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(focusFrame(m_window), nullptr);
    QTest::keyClick(&first, Qt::Key_Tab);
    ASSERT_NE(focusFrame(m_window), nullptr);
    EXPECT_EQ(focusFrame(m_window)->widget(), &second);
    EXPECT_TRUE(FocusRing::isDueTo(second));
    first.setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(focusFrame(m_window), nullptr);
    field.setFocus(Qt::MouseFocusReason);
    ASSERT_NE(focusFrame(m_window), nullptr);
    inRow.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(focusFrame(m_window), nullptr) << "an editor within a row has no halo";
    list.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(focusFrame(m_window), nullptr) << "a list shows its focus by its rows";
}
