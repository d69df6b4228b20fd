#include "ThemedTest.h"

#include "workspace/controls/Alert.h"
#include "workspace/controls/Popover.h"
#include "workspace/controls/ProgressCapsule.h"
#include "workspace/controls/Scrim.h"
#include "workspace/theme/FocusRing.h"
#include "workspace/theme/Metrics.h"

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
    static QPushButton *buttonOf(const Alert &alert, const QString &label)
    {
        for (QPushButton *button : alert.findChildren<QPushButton *>()) {
            if (button->text() == label)
                return button;
        }
        return nullptr;
    }

    QPushButton m_before{&m_window};
    QStringList m_answers;
};

} // namespace

TEST_F(PopoverTest, PointsAtItsTargetFromAbove)
{
    open();
    const QRect body = m_popover.bodyInWindow();
    EXPECT_EQ(body.bottom() + 1, m_target.y() - 8);
    EXPECT_EQ(body.width(), Metrics::popoverWidth);
    EXPECT_NEAR(body.center().x(), m_target.geometry().center().x(), 1);
}

TEST_F(PopoverTest, MovesSidewaysAtTheWindowsEdge)
{
    m_target.move(860, 500);
    open();
    EXPECT_LE(m_popover.bodyInWindow().right(), m_window.width() - 8);
    m_window.resize(700, 600);
    EXPECT_TRUE(m_window.rect().contains(m_popover.bodyInWindow()));
}

TEST_F(PopoverTest, EscapeClosesAndGivesTheFocusBack)
{
    open();
    EXPECT_TRUE(m_field.hasFocus());
    const QSignalSpy closings(&m_popover, &Popover::closed);
    QTest::keyClick(&m_field, Qt::Key_Escape);
    EXPECT_FALSE(m_popover.isVisible());
    EXPECT_TRUE(m_elsewhere.hasFocus());
    EXPECT_EQ(closings.count(), 1);
    m_popover.close();
    EXPECT_EQ(closings.count(), 1);
}

TEST_F(PopoverTest, GivesTheRingBackToo)
{
    m_target.setFocus(Qt::OtherFocusReason);
    m_elsewhere.setFocus(Qt::TabFocusReason);
    open();
    QTest::keyClick(&m_field, Qt::Key_Escape);
    EXPECT_TRUE(FocusRing::isDueTo(m_elsewhere));
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

TEST_F(PopoverTest, GrowsUpwardsWithItsContent)
{
    open();
    const QRect before = m_popover.bodyInWindow();
    m_inside.setFixedHeight(100);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_popover.bodyInWindow().top() < before.top(); }));
    EXPECT_EQ(m_popover.bodyInWindow().bottom(), before.bottom());
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
    EXPECT_EQ(scrims().size(), 1);
    QTest::keyClick(alert, Qt::Key_Escape);
    EXPECT_EQ(m_answers, QStringList{u"cancel"_s});
    EXPECT_EQ(scrims().size(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return alert == nullptr; }));
    EXPECT_TRUE(m_before.hasFocus());
}

TEST_F(SheetTest, ReturnTakesTheAction)
{
    Alert *alert = activated(Alert::show(m_window, question()));
    QTest::keyClick(alert, Qt::Key_Return);
    EXPECT_EQ(m_answers, QStringList{u"action "_s});
}

TEST_F(SheetTest, ReturnNeverTakesADestructiveActionByItself)
{
    Alert *alert = activated(Alert::show(m_window, question(ButtonRole::destructive)));
    EXPECT_EQ(alert->focusWidget(), buttonOf(*alert, u"Cancel"_s));
    QTest::keyClick(alert->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(m_answers, QStringList{u"cancel"_s});
}

TEST_F(SheetTest, ReturnOnTheFocusedDestructiveButtonTakesIt)
{
    Alert *alert = activated(Alert::show(m_window, question(ButtonRole::destructive)));
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

TEST_F(SheetTest, CancelStandsLeftOfTheActionAtTheRight)
{
    const Alert *alert = activated(Alert::show(m_window, question()));
    const QRect cancel = buttonOf(*alert, u"Cancel"_s)->geometry();
    const QRect action = buttonOf(*alert, u"Delete"_s)->geometry();
    EXPECT_LT(cancel.right(), action.left() + 4);
    EXPECT_NEAR(alert->bodyRect().right() - action.right(), 21 - 2, 1);
    EXPECT_EQ(alert->bodyRect().width(), Metrics::dialogWidth);
    EXPECT_EQ(alert->bodyRect().height(), 132);
}

TEST_F(SheetTest, LongMessagesMakeItHigherAndNarrowWindowsNarrower)
{
    Alert::Content content = question();
    content.message = u"“Environment matters” will be merged. "_s.repeated(10);
    m_window.resize(300, 600);
    const Alert *alert = activated(Alert::show(m_window, content));
    EXPECT_EQ(alert->bodyRect().width(), 260);
    EXPECT_GT(alert->bodyRect().height(), 300);
}

TEST_F(SheetTest, ASecondSheetDimsTheFirst)
{
    Alert *first = activated(Alert::show(m_window, question()));
    Alert *second = activated(Alert::show(*first, question()));
    EXPECT_EQ(first->findChildren<Scrim *>().size(), 1);
    EXPECT_EQ(scrims().size(), 3) << "two over the window, one of them in the first sheet";
    second->reject();
    EXPECT_EQ(first->findChildren<Scrim *>().size(), 0);
    EXPECT_TRUE(first->isVisible());
    first->reject();
    EXPECT_EQ(scrims().size(), 0);
}

TEST_F(SheetTest, TheScrimCoversAWindowThatGrows)
{
    activated(Alert::show(m_window, question()));
    m_window.resize(1100, 700);
    ASSERT_EQ(scrims().size(), 1);
    EXPECT_EQ(scrims().constFirst()->geometry(), m_window.rect());
}

TEST_F(SheetTest, AnAnimatedSheetArrives)
{
    animate(true);
    const Alert *alert = activated(Alert::show(m_window, question()));
    EXPECT_TRUE(alert->isVisible());
    const QPoint start = alert->pos();
    EXPECT_TRUE(QTest::qWaitFor([&] { return alert->pos() == start + QPoint(0, 8); }));
}

TEST_F(SheetTest, ProgressCoversTheWindowUntilItIsDeleted)
{
    auto progress = std::make_unique<ProgressCapsule>(m_window);
    progress->setProgress(3, 8, u"Interview with participant A.docx"_s);
    EXPECT_EQ(scrims().size(), 1);
    EXPECT_TRUE(progress->accessibleName().contains(u"3"_s));
    const QSignalSpy stops(progress.get(), &ProgressCapsule::stopped);
    auto *stop = progress->findChild<QPushButton *>();
    EXPECT_TRUE(stop->hasFocus());
    QTest::keyClick(stop, Qt::Key_Tab);
    EXPECT_TRUE(stop->hasFocus()) << "nothing below can be reached";
    QTest::mouseClick(stop, Qt::LeftButton);
    EXPECT_EQ(stops.count(), 1);
    progress.reset();
    EXPECT_EQ(scrims().size(), 0);
}
