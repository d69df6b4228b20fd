#include "ThemedTest.h"

#include "workspace/controls/Capsule.h"
#include "workspace/controls/ElidedLabel.h"
#include "workspace/controls/EmptyState.h"
#include "workspace/controls/Paragraph.h"
#include "workspace/controls/Pill.h"
#include "workspace/controls/Transition.h"
#include "workspace/theme/Fonts.h"
#include "workspace/theme/Roles.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int line = 18;

} // namespace

TEST_F(ThemedTest, AParagraphIsAsHighAsItsLines)
{
    Paragraph paragraph(u"One two three four five six seven"_s, Fonts::body(), Symbols::Tint::text, line);
    const int whole = paragraph.sizeHint().width();
    EXPECT_EQ(paragraph.heightForWidth(whole + 1), line);
    EXPECT_EQ(paragraph.heightForWidth(whole * 2 / 3), 2 * line);
    paragraph.setText(u"one\ntwo\nthree"_s);
    EXPECT_EQ(paragraph.sizeHint().height(), 3 * line);
    EXPECT_EQ(paragraph.accessibleName(), u"one\ntwo\nthree"_s);
    paragraph.setContentsMargins(0, 5, 0, 7);
    EXPECT_EQ(paragraph.heightForWidth(500), 3 * line + 12);
}

TEST_F(ThemedTest, AParagraphBreaksAWordThatIsWiderThanItself)
{
    const Paragraph paragraph(u"W"_s.repeated(400), Fonts::body(), Symbols::Tint::text, line);
    EXPECT_GT(paragraph.heightForWidth(100), 10 * line);
    EXPECT_GT(paragraph.heightForWidth(1), 100 * line);
    EXPECT_GE(paragraph.heightForWidth(0), line);
}

TEST_F(ThemedTest, AnElidedLabelNeverElidesWhatHasItsRoom)
{
    for (const QFont &font : {Fonts::callout(), Fonts::body(), Fonts::caption(), Fonts::readerTitle()}) {
        ElidedLabel label(u"Imported 3 documents"_s, font, Symbols::Tint::text);
        label.resize(label.sizeHint());
        EXPECT_FALSE(label.isElided());
        label.resize(label.width() - 2, label.height());
        EXPECT_TRUE(label.isElided());
    }
}

TEST_F(ThemedTest, AnElidedLabelKeepsRoomForTheWidestText)
{
    ElidedLabel label(u"1 character selected"_s, Fonts::callout(), Symbols::Tint::text);
    label.reserveRoomFor(u"888,888 characters selected"_s);
    const int reserved = label.sizeHint().width();
    label.setText(u"61 characters selected"_s);
    EXPECT_EQ(label.sizeHint().width(), reserved);
    label.setText(u"two\nlines"_s);
    EXPECT_EQ(label.text(), u"two lines"_s);
}

TEST_F(ThemedTest, APillIsWideEnoughForUpperCase)
{
    const Pill pill(u"docx"_s);
    EXPECT_EQ(pill.text(), u"docx"_s);
    EXPECT_GT(pill.sizeHint().width(), QFontMetrics(Fonts::pill()).horizontalAdvance(u"DOCX"_s));
}

TEST_F(ThemedTest, TheButtonsOfAnEmptyStateAreAlikeAndInTheMiddle)
{
    EmptyState state(u"text.book.closed"_s, 34, u"No Documents Yet"_s, u"Import interviews."_s, &m_window);
    auto *longer = new QPushButton(u"Load Sample Content"_s);
    auto *shorter = new QPushButton(u"Import"_s);
    state.addButton(shorter);
    state.addButton(longer);
    state.resize(285, 500);
    showWindow();
    EXPECT_EQ(shorter->width(), longer->width());
    EXPECT_NEAR(shorter->mapTo(&state, shorter->rect().center()).x(), 142, 1);
    EXPECT_GT(shorter->mapTo(&state, QPoint()).y(), 250);
}

TEST_F(ThemedTest, ACapsuleIsPlacedByItsPillAndStaysInItsParent)
{
    showWindow();
    Capsule capsule(Shadow::banner(), {15, 9, 15, 9}, &m_window);
    auto *label = new ElidedLabel(u"Imported 3 documents"_s, Fonts::callout(), Symbols::Tint::text);
    capsule.row().addWidget(label);
    capsule.placeAtBottom(22);
    const QRect pill = capsule.bodyRect().translated(capsule.pos());
    EXPECT_EQ(pill.bottom() + 1, m_window.height() - 22);
    EXPECT_NEAR(pill.center().x(), m_window.rect().center().x(), 1);
    label->setText(u"a message that is far too long "_s.repeated(20));
    capsule.placeAtBottom(22);
    EXPECT_TRUE(m_window.rect().contains(capsule.bodyRect().translated(capsule.pos())));
}

TEST_F(ThemedTest, WithoutAnimationsOnlyTheFinalStateShows)
{
    showWindow();
    QWidget widget(&m_window);
    widget.hide();
    Transition::fade().appear(widget);
    EXPECT_TRUE(widget.isVisible());
    EXPECT_TRUE(widget.mask().isEmpty());
    EXPECT_EQ(m_window.findChildren<QWidget *>().size(), 1);
    Transition::fade().disappear(widget);
    EXPECT_FALSE(widget.isVisible());
    EXPECT_EQ(m_window.findChildren<QWidget *>().size(), 1);
}

TEST_F(ThemedTest, AnAnimatedWidgetIsThereAtOnceAndLeavesNothingBehind)
{
    animate(true);
    showWindow();
    QWidget widget(&m_window);
    widget.hide();
    Transition::banner(widget).appear(widget);
    EXPECT_TRUE(widget.isVisible());
    EXPECT_EQ(m_window.findChildren<QWidget *>().size(), 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return widget.mask().isEmpty(); }));
    EXPECT_EQ(m_window.findChildren<QWidget *>().size(), 1);
    Transition::banner(widget).disappear(widget);
    EXPECT_FALSE(widget.isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_window.findChildren<QWidget *>().size() == 1; }));
}

TEST_F(ThemedTest, AWidgetThatGoesAndComesBackAtOnceIsSeen)
{
    animate(true);
    showWindow();
    QWidget widget(&m_window);
    widget.hide();
    Transition::fade().appear(widget);
    Transition::fade().disappear(widget);
    Transition::fade().appear(widget);
    EXPECT_TRUE(widget.isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_window.findChildren<QWidget *>().size() == 1; }));
    EXPECT_TRUE(widget.mask().isEmpty());
}

TEST_F(ThemedTest, AWidgetMayBeDeletedOnItsWay)
{
    animate(true);
    showWindow();
    auto *widget = new QWidget(&m_window);
    widget->hide();
    Transition::fade().appear(*widget);
    delete widget;
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_window.findChildren<QWidget *>().isEmpty(); }));
}
