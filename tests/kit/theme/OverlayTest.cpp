#include "ThemedTest.h"

#include "kit/controls/Alert.h"
#include "kit/controls/Popover.h"
#include "kit/theme/FocusRing.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
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
    SheetTest() { showWindow(); }
    Alert::Content question(ButtonRole role = ButtonRole::prominent)
    {
        return {.title = u"Delete?"_s,
            .message = {},
            .field = {},
            .action = u"Delete"_s,
            .actionRole = role,
            .cancel = u"Cancel"_s,
            .onAction = [this](const QString &text) { m_answers.append(u"action "_s + text); },
            .onCancel = [this] { m_answers.append(u"cancel"_s); }};
    }
    /// As the window system would.
    static Alert *activated(Alert *alert)
    {
        QApplication::setActiveWindow(alert);
        return alert;
    }

    QStringList m_answers;
};

} // namespace

TEST_F(PopoverTest, TabStaysInsideAndEscapeGivesFocusAndRingBack)
{
    m_target.setFocus(Qt::OtherFocusReason);
    m_elsewhere.setFocus(Qt::TabFocusReason);
    open();
    EXPECT_TRUE(m_field.hasFocus());
    for (const auto &[key, stop] : std::initializer_list<std::pair<Qt::Key, QWidget *>>{
             {Qt::Key_Tab, &m_inside}, {Qt::Key_Tab, &m_field}, {Qt::Key_Backtab, &m_inside}}) {
        QTest::keyClick(QApplication::focusWidget(), key);
        EXPECT_TRUE(stop->hasFocus());
    }
    const QSignalSpy closings(&m_popover, &Popover::closed);
    QTest::keyClick(&m_inside, Qt::Key_Escape);
    EXPECT_FALSE(m_popover.isVisible());
    EXPECT_TRUE(m_elsewhere.hasFocus());
    EXPECT_TRUE(FocusRing::isDueTo(m_elsewhere));
    m_popover.close();
    EXPECT_EQ(closings.count(), 1);
}

TEST_F(PopoverTest, ClicksOutsideCloseAndThatOnItsTargetDoesntOpenItAgain)
{
    QObject::connect(&m_target, &QPushButton::clicked, &m_popover, [this] { open(); });
    QTest::mouseClick(&m_target, Qt::LeftButton);
    QTest::mouseClick(&m_inside, Qt::LeftButton);
    ASSERT_TRUE(m_popover.isVisible());
    QTest::mouseClick(&m_target, Qt::LeftButton);
    EXPECT_FALSE(m_popover.isVisible());
    open();
    const QSignalSpy clicks(&m_elsewhere, &QPushButton::clicked);
    QTest::mouseClick(&m_elsewhere, Qt::LeftButton);
    EXPECT_FALSE(m_popover.isVisible());
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(PopoverTest, StandsAboveItsTargetWithinTheWindowAndSurvivesItsEnd)
{
    auto target = std::make_unique<QPushButton>(&m_window);
    target->setGeometry(500, 500, 100, 30);
    m_popover.openAbove(*target);
    EXPECT_LT(m_popover.bodyInWindow().bottom(), target->y());
    EXPECT_NEAR(m_popover.bodyInWindow().center().x(), target->geometry().center().x(), 1);
    m_window.resize(560, 600);
    EXPECT_TRUE(m_window.rect().contains(m_popover.bodyInWindow()));
    target.reset();
    m_window.resize(800, 500);
    m_popover.close();
    EXPECT_FALSE(m_popover.isVisible());
}

TEST_F(SheetTest, ReturnTakesTheActionButADestructiveOneOnlyWhereItHasTheFocus)
{
    const auto answer = [this](ButtonRole role, bool goesOn) {
        Alert *alert = activated(Alert::show(m_window, question(role)));
        if (goesOn)
            QTest::keyClick(alert->focusWidget(), Qt::Key_Tab);
        QTest::keyClick(alert->focusWidget(), Qt::Key_Return);
        return m_answers.takeLast();
    };
    EXPECT_EQ(answer(ButtonRole::prominent, false), u"action "_s);
    EXPECT_EQ(answer(ButtonRole::destructive, false), u"cancel"_s);
    EXPECT_EQ(answer(ButtonRole::destructive, true), u"action "_s);
}
