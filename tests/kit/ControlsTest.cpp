#include "kit/controls/LongText.h"
#include "kit/controls/Popover.h"
#include "kit/controls/Transition.h"
#include "kit/theme/FocusRing.h"
#include "kit/theme/Shadow.h"
#include "kit/theme/ThemedTest.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

class Popovers : public ThemedTest {
protected:
    Popovers()
    {
        target.setGeometry(500, 500, 100, 30);
        elsewhere.setGeometry(10, 10, 100, 30);
        auto *column = new QVBoxLayout(&popover);
        column->addWidget(&field);
        column->addWidget(&inside);
        showWindow();
        elsewhere.setFocus(Qt::TabFocusReason);
    }
    void open() { popover.openAbove(target, &field); }

    QPushButton target{&m_window};
    QPushButton elsewhere{&m_window};
    Popover popover{m_window};
    QLineEdit field;
    QPushButton inside;
};

} // namespace

TEST_F(ThemedTest, AWidgetThatComesAndGoesLeavesNothingBehind)
{
    showWindow();
    auto widget = std::make_unique<QWidget>(&m_window);
    const auto isAlone = [&] { return m_window.findChildren<QWidget *>().size() == 1 && widget->mask().isEmpty(); };
    for (const bool isAnimated : {false, true}) {
        animate(isAnimated);
        for (const Transition &transition : {Transition::fade(), Transition::banner(*widget)}) {
            transition.disappear(*widget);
            EXPECT_FALSE(widget->isVisible()) << "at once";
            transition.appear(*widget);
            EXPECT_TRUE(widget->isVisible());
            EXPECT_NE(isAlone(), isAnimated);
            EXPECT_TRUE(QTest::qWaitFor(isAlone));
        }
    }
    widget->hide();
    Transition::fade().appear(*widget);
    widget.reset(); // on its way
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_window.findChildren<QWidget *>().isEmpty(); }));
}

TEST(LongText, WordsOfMoreThan16000UnitsMayBreakAnywhere)
{
    const auto breaksAnywhere = [](const QString &text) {
        return LongText::wrapMode(text) == QTextOption::WrapAnywhere;
    };
    const QString word = u"a"_s.repeated(16'000);
    EXPECT_FALSE(breaksAnywhere(word + u' ' + word));
    EXPECT_TRUE(breaksAnywhere(u"some words "_s + word + u'a'));
    const std::pair<QStringList, bool> texts[]{
        {{u"word "_s, u"\u7814\u7A76\u3002"_s, // a sentence of ideographs
             u"\u3400"_s, u"\u4DBF"_s, u"\u4E00"_s, u"\u9FFF"_s, u"\uAC00"_s, u"\uD7A3"_s, u"\uF900"_s, u"\uFAFF"_s,
             u"\U00020000"_s, u"\U0003FFFF"_s},
            false},
        {{u"word\u00A0"_s, u"word\u2007"_s, u"word\u202F"_s, u"\u7814\u00A0"_s, // spaces that don't break
             u"\u3002"_s, u"\u3083"_s, // may not begin a line
             u"\u33FF"_s, u"\u4DC0"_s, u"\uABFF"_s, u"\uA4D0"_s, u"\uD7B0"_s, u"\uFB00"_s, u"\U0001D41A"_s},
            true}};
    for (const auto &[words, expected] : texts) {
        for (const QString &repeated : words)
            EXPECT_EQ(breaksAnywhere(repeated.repeated(20'000)), expected) << repeated.toStdString();
    }
}

TEST_F(Popovers, StandAboveTheirTargetWithinTheWindow)
{
    open();
    for (const auto &[x, middle] : {std::pair(0, 147), {500, 548}, {800, 751}}) {
        target.move(x, 500);
        const QRect body = popover.bodyInWindow();
        EXPECT_EQ(body.center().x(), middle) << "as far as the edges of the window allow";
        EXPECT_EQ(body.bottom() + 9, target.y());
        EXPECT_TRUE(popover.geometry().contains(body.marginsAdded(Shadow::menu().reach()))) << "the whole shadow";
    }
    inside.setFixedHeight(200);
    QApplication::processEvents();
    EXPECT_GT(popover.bodyInWindow().height(), 200);
    EXPECT_EQ(popover.bodyInWindow().bottom() + 9, target.y());
}

TEST_F(Popovers, TabStaysInsideAndEscapeGivesFocusAndRingBack)
{
    open();
    EXPECT_TRUE(field.hasFocus());
    for (const auto &[key, stop] : std::initializer_list<std::pair<Qt::Key, QWidget *>>{
             {Qt::Key_Tab, &inside}, {Qt::Key_Tab, &field}, {Qt::Key_Backtab, &inside}}) {
        QTest::keyClick(QApplication::focusWidget(), key);
        EXPECT_TRUE(stop->hasFocus());
    }
    const QSignalSpy closings(&popover, &Popover::closed);
    QTest::keyClick(&inside, Qt::Key_Escape);
    EXPECT_FALSE(popover.isVisible());
    EXPECT_TRUE(FocusRing::isDueTo(elsewhere));
    popover.close();
    EXPECT_EQ(closings.count(), 1);
}

TEST_F(Popovers, ClicksOutsideCloseThemAndOneOnTheTargetDoesNotOpenThemAgain)
{
    QObject::connect(&target, &QPushButton::clicked, &popover, [this] { open(); });
    const QSignalSpy clicks(&elsewhere, &QPushButton::clicked);
    for (QPushButton *outside : {&target, &elsewhere}) {
        QTest::mouseClick(&target, Qt::LeftButton);
        QTest::mouseClick(&inside, Qt::LeftButton);
        ASSERT_TRUE(popover.isVisible());
        QTest::mouseClick(outside, Qt::LeftButton);
        EXPECT_FALSE(popover.isVisible());
    }
    EXPECT_EQ(clicks.count(), 1);
}
