#include "ShownCodingText.h"
#include "surface/LazyTextLayout.h"

#include <QRandomGenerator>
#include <QTextDocument>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Paragraphs of all lengths, so that no estimate is right.
QString unevenText(int count, quint32 seed = 1)
{
    QRandomGenerator random(seed);
    QString text;
    for (int number = 0; number < count; ++number) {
        text += u"%1 "_s.arg(number);
        for (int word = random.bounded(140); word > 0; --word)
            text += random.bounded(3) ? u"wiw "_s : random.bounded(9) ? u"Warsaw "_s : u"\u4E2D\u6587 "_s;
        text += u'\n';
    }
    return text;
}

LazyTextLayout &layoutOf(ShownCodingText &shown)
{
    return *static_cast<LazyTextLayout *>(shown.view.document()->documentLayout());
}

/// Where the character stands that is nearest to the middle of the page.
struct Anchor {
    explicit Anchor(ShownCodingText &shown)
        : position(shown.view.characterAt(QPoint(100, shown.view.viewport()->height() / 2))),
          top(shown.view.characterRectangle(position).top())
    {
    }
    qint64 position;
    int top;
};

qint64 topCharacter(const ShownCodingText &shown)
{
    return shown.view.characterAt(QPoint(0, 1));
}

} // namespace

TEST(CodingTextViewScrolling, MovesTheTextByExactlyThePixelsOfEachStep)
{
    ShownCodingText shown(unevenText(600));
    shown.reveal({shown.content.text.size() - 400, 10}); // everything above is only estimated
    QRandomGenerator random(2);
    for (int step = 0; step < 300 && shown.scrolled() > 500; ++step) {
        const Anchor before(shown);
        const int pixels = random.bounded(1, 200);
        shown.scrollTo(shown.scrolled() - pixels);
        ASSERT_EQ(shown.view.characterRectangle(before.position).top(), before.top + pixels) << step;
    }
}

TEST(CodingTextViewScrolling, ReachesBothEndsExactly)
{
    ShownCodingText shown(unevenText(600));
    QScrollBar *bar = shown.view.verticalScrollBar();
    const auto expectEnd = [&] {
        const int bottom = shown.view.characterRectangle(shown.content.text.size()).bottom();
        EXPECT_NEAR(bottom, shown.view.viewport()->height() - 28, 8);
    };
    for (int round = 0; round < 3; ++round) {
        shown.scrollTo(bar->maximum());
        expectEnd();
        shown.scrollTo(bar->maximum() / 2);
        EXPECT_NEAR(double(topCharacter(shown)) / double(shown.content.text.size()), 0.5, 0.05);
        shown.scrollTo(0);
        EXPECT_EQ(shown.view.characterRectangle(0).top(), 28);
    }
    for (int step = 0; step < 4000 && shown.scrolled() < bar->maximum(); ++step)
        bar->triggerAction(QScrollBar::SliderPageStepAdd);
    expectEnd();
}

TEST(CodingTextViewScrolling, RevealsAnyRangeFromAnywhereAndShowsItAtTheEdgeItCameFrom)
{
    ShownCodingText shown(unevenText(1500));
    QRandomGenerator random(4);
    const QRect page = shown.view.viewport()->rect();
    EXPECT_LT(layoutOf(shown).laidOutCount(), 60);
    for (int step = 0; step < 100; ++step) {
        const TextRange range{random.bounded(int(shown.content.text.size()) - 30), random.bounded(1, 30)};
        const int before = shown.scrolled();
        const bool wasInView = page.contains(shown.view.characterRectangle(range.location).adjusted(0, -2, 0, 4))
            && page.contains(shown.view.characterRectangle(range.end() - 1).adjusted(0, -2, 0, 4));
        shown.reveal(range);
        QApplication::processEvents();
        const QRect first = shown.view.characterRectangle(range.location);
        const QRect last = shown.view.characterRectangle(range.end() - 1);
        ASSERT_GE(first.top(), 0) << step;
        ASSERT_LE(last.bottom(), page.bottom()) << step;
        const bool isAtAnEdge = first.top() <= 4 || last.bottom() >= page.bottom() - 7;
        ASSERT_TRUE(wasInView ? shown.scrolled() == before : isAtAnEdge) << step << ": " << first.top();
        ASSERT_LE(layoutOf(shown).laidOutCount(), 101);
    }
}

TEST(CodingTextViewScrolling, KeepsTheLineAtTheTopWhenWidthOrFontChange)
{
    ShownCodingText shown(unevenText(900));
    shown.reveal({30'000, 5});
    const QSize size = shown.view.size();
    const qint64 top = topCharacter(shown);
    const int offset = shown.view.characterRectangle(top).top();
    for (const int width : {400, 300, 900, 650, 1100, size.width()}) {
        shown.view.resize(width, size.height());
        QApplication::processEvents();
        EXPECT_NEAR(shown.view.characterRectangle(top).top(), offset, 1) << width; // lines stand on half pixels
    }
    EXPECT_EQ(topCharacter(shown), top) << "and comes back to it";
    QFont font = shown.view.font();
    for (const double factor : {1.5, 1 / 1.5}) {
        font.setPointSizeF(font.pointSizeF() * factor);
        shown.view.setFont(font);
        QApplication::processEvents();
        EXPECT_LE(shown.view.characterRectangle(top).top(), 0);
        EXPECT_GT(shown.view.characterRectangle(top).bottom(), 0);
    }
}

TEST(CodingTextViewScrolling, StaysWhenCharactersFarAwayAreAskedFor)
{
    ShownCodingText shown(unevenText(900));
    shown.scrollTo(shown.view.verticalScrollBar()->maximum() / 2);
    const QImage before = shown.picture();
    for (qint64 position = 0; position < shown.content.text.size(); position += 997)
        (void)shown.view.characterRectangle(position);
    EXPECT_EQ(shown.picture(), before);
    const int scrolled = shown.scrolled();
    shown.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(shown.scrolled(), scrolled) << "and when everything is selected";
    EXPECT_LE(layoutOf(shown).laidOutCount(), 101);
}

TEST(CodingTextViewScrolling, FollowsTheCaretToBothEnds)
{
    ShownCodingText shown(unevenText(900));
    shown.press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(shown.scrolled(), shown.view.verticalScrollBar()->maximum());
    EXPECT_EQ(shown.view.selection(), (TextRange{shown.content.text.size(), 0}));
    shown.press(Qt::Key_Home, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(shown.scrolled(), 0) << "not only as far as the inset";
    EXPECT_EQ(shown.view.selection(), (TextRange{0, shown.content.text.size()}));
    for (int step = 0; step < 6; ++step) {
        shown.press(Qt::Key_PageDown);
        const QRect caret = shown.view.characterRectangle(shown.view.selection().location);
        ASSERT_TRUE(shown.view.viewport()->rect().contains(caret)) << step;
    }
}
