#include "ThemedTest.h"

#include "workspace/controls/Alert.h"
#include "workspace/controls/Popover.h"
#include "workspace/controls/Scrim.h"
#include "workspace/theme/FocusRing.h"

#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

class PopoverTest : public ThemedTest {
protected:
    PopoverTest()
    {
        m_target.setGeometry(500, 500, 100, 30);
        m_elsewhere.setGeometry(10, 10, 100, 30);
        auto *column = new QVBoxLayout(&m_popover);
        column->addWidget(&m_field);
        column->addWidget(&m_inside);
        showWindow();
        m_elsewhere.setFocus(Qt::OtherFocusReason);
    }
    void open() { m_popover.openAbove(m_target, &m_field); }

    QPushButton m_target{&m_window};
    QPushButton m_elsewhere{&m_window};
    Popover m_popover{m_window};
    QLineEdit m_field;
    QPushButton m_inside{u"Create"_s};
};

class SheetTest : public ThemedTest {
protected:
    SheetTest()
    {
        showWindow();
        m_before.setFocus(Qt::OtherFocusReason);
    }
    Alert::Content question(ButtonRole role = ButtonRole::prominent)
    {
        return {.title = u"Delete?"_s,
            .message = u"This can't be undone."_s,
            .field = {},
            .action = u"Delete"_s,
            .actionRole = role,
            .cancel = u"Cancel"_s,
            .onAction = [this](const QString &text) { m_answers.append(u"action "_s + text); },
            .onCancel = [this] { m_answers.append(u"cancel"_s); }};
    }
    QList<Scrim *> scrims() const { return m_window.findChildren<Scrim *>(); }
    /// As the window system would.
    static Alert *activated(Alert *alert)
    {
        QApplication::setActiveWindow(alert);
        return alert;
    }

    QPushButton m_before{&m_window};
    QStringList m_answers;
};

} // namespace

TEST_F(PopoverTest, PointsAtItsTargetFromAboveAndMovesSidewaysAtTheWindowsEdge)
{
    open();
    EXPECT_EQ(m_popover.bodyInWindow().bottom() + 1, m_target.y() - 8);
    EXPECT_NEAR(m_popover.bodyInWindow().center().x(), m_target.geometry().center().x(), 1);
    m_window.resize(560, 600);
    EXPECT_TRUE(m_window.rect().contains(m_popover.bodyInWindow()));
}

TEST_F(PopoverTest, EscapeClosesAndGivesFocusAndRingBack)
{
    m_target.setFocus(Qt::OtherFocusReason);
    m_elsewhere.setFocus(Qt::TabFocusReason);
    open();
    EXPECT_TRUE(m_field.hasFocus());
    const QSignalSpy closings(&m_popover, &Popover::closed);
    QTest::keyClick(&m_field, Qt::Key_Escape);
    EXPECT_FALSE(m_popover.isVisible());
    EXPECT_TRUE(m_elsewhere.hasFocus());
    EXPECT_TRUE(FocusRing::isDueTo(m_elsewhere));
    m_popover.close();
    EXPECT_EQ(closings.count(), 1);
}

TEST_F(PopoverTest, ClicksOutsideCloseAndClicksInsideDont)
{
    open();
    QTest::mouseClick(&m_inside, Qt::LeftButton);
    EXPECT_TRUE(m_popover.isVisible());
    const QSignalSpy clicks(&m_elsewhere, &QPushButton::clicked);
    QTest::mouseClick(&m_elsewhere, Qt::LeftButton);
    EXPECT_FALSE(m_popover.isVisible());
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(PopoverTest, AClickOnItsTargetDoesntOpenItAgain)
{
    QObject::connect(&m_target, &QPushButton::clicked, &m_popover, [this] { open(); });
    QTest::mouseClick(&m_target, Qt::LeftButton);
    ASSERT_TRUE(m_popover.isVisible());
    QTest::mouseClick(&m_target, Qt::LeftButton);
    EXPECT_FALSE(m_popover.isVisible());
}

TEST_F(PopoverTest, TabStaysInside)
{
    open();
    QTest::keyClick(&m_field, Qt::Key_Tab);
    EXPECT_TRUE(m_inside.hasFocus());
    QTest::keyClick(&m_inside, Qt::Key_Tab);
    EXPECT_TRUE(m_field.hasFocus());
    QTest::keyClick(&m_field, Qt::Key_Backtab);
    EXPECT_TRUE(m_inside.hasFocus());
}

TEST_F(PopoverTest, SurvivesTheEndOfItsTarget)
{
    auto target = std::make_unique<QPushButton>(&m_window);
    m_popover.openAbove(*target);
    target.reset();
    m_window.resize(800, 500);
    m_popover.close();
    EXPECT_FALSE(m_popover.isVisible());
}

TEST_F(SheetTest, EscapeCancelsAndEverythingIsAsBefore)
{
    QPointer<Alert> alert = activated(Alert::show(m_window, question()));
    EXPECT_EQ(alert->windowModality(), Qt::WindowModal);
    ASSERT_EQ(scrims().size(), 1);
    m_window.resize(1100, 700);
    EXPECT_EQ(scrims().constFirst()->geometry(), m_window.rect());
    QTest::keyClick(alert, Qt::Key_Escape);
    EXPECT_EQ(m_answers, QStringList{u"cancel"_s});
    EXPECT_EQ(scrims().size(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return alert == nullptr; }));
    EXPECT_TRUE(m_before.hasFocus());
}

TEST_F(SheetTest, ReturnTakesTheActionButADestructiveOneOnlyWhereItHasTheFocus)
{
    QTest::keyClick(activated(Alert::show(m_window, question())), Qt::Key_Return);
    EXPECT_EQ(m_answers.takeLast(), u"action "_s);
    Alert *alert = activated(Alert::show(m_window, question(ButtonRole::destructive)));
    QTest::keyClick(alert->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(m_answers.takeLast(), u"cancel"_s);
    alert = activated(Alert::show(m_window, question(ButtonRole::destructive)));
    QTest::keyClick(alert->focusWidget(), Qt::Key_Tab);
    QTest::keyClick(alert->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(m_answers, QStringList{u"action "_s});
}

TEST_F(SheetTest, TheFieldsTextIsSelectedAndGoesToTheAnswer)
{
    Alert::Content content = question();
    content.field = Alert::Field{u"Untitled Study"_s, u"Project name"_s, {}};
    Alert *alert = activated(Alert::show(m_window, content));
    auto *field = alert->findChild<QLineEdit *>();
    EXPECT_EQ(alert->focusWidget(), field);
    EXPECT_EQ(field->selectedText(), u"Untitled Study"_s);
    QTest::keyClicks(field, u"Field work"_s);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(m_answers, QStringList{u"action Field work"_s});
}
