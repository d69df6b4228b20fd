#include "ShownCodingText.h"
#include "surface/LazyTextLayout.h"

#include <QRandomGenerator>
#include <QTextDocument>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Paragraphs of all lengths, so that no estimate is right.
QString unevenText(int count)
{
    QRandomGenerator random(1);
    QString text;
    for (int number = 0; number < count; ++number) {
        text += u"%1 "_s.arg(number);
        for (int word = random.bounded(140); word > 0; --word)
            text += random.bounded(3) ? u"wiw "_s : random.bounded(9) ? u"Warsaw "_s : u"\u4E2D\u6587 "_s;
        text += u'\n';
    }
    return text;
}

struct UnevenText : ShownCodingText {
    explicit UnevenText(int count) : ShownCodingText(unevenText(count)) { }

    [[nodiscard]] QRect rectangle(qint64 position) const { return view.characterRectangle(position); }
    [[nodiscard]] qint64 topCharacter() const { return view.characterAt(QPoint(0, 1)); }
    [[nodiscard]] int laidOutCount() const
    {
        return static_cast<const LazyTextLayout *>(view.document()->documentLayout())->laidOutCount();
    }
    QScrollBar &bar = *view.verticalScrollBar();
    const qint64 end = content.text.size();
    const QRect page = view.viewport()->rect();
};

} // namespace

TEST(CodingTextViewScrolling, MovesTheTextByExactlyThePixelsOfEachStep)
{
    UnevenText shown(600);
    shown.reveal({shown.end - 400, 10}); // everything above is only estimated
    QRandomGenerator random(2);
    for (int step = 0; step < 300 && shown.scrolled() > 500; ++step) {
        const qint64 middle = shown.view.characterAt(QPoint(100, shown.page.height() / 2));
        const int top = shown.rectangle(middle).top();
        const int pixels = random.bounded(1, 200);
        shown.scrollTo(shown.scrolled() - pixels);
        ASSERT_EQ(shown.rectangle(middle).top(), top + pixels) << step;
    }
}

TEST(CodingTextViewScrolling, ReachesBothEndsExactly)
{
    UnevenText shown(600);
    const auto expectEnd = [&] { EXPECT_NEAR(shown.rectangle(shown.end).bottom(), shown.page.height() - 28, 8); };
    for (int round = 0; round < 3; ++round) {
        shown.scrollTo(shown.bar.maximum());
        expectEnd();
        shown.scrollTo(shown.bar.maximum() / 2);
        EXPECT_NEAR(double(shown.topCharacter()) / double(shown.end), 0.5, 0.05);
        const int scrolled = shown.scrolled();
        shown.press(Qt::Key_A, Qt::ControlModifier);
        EXPECT_EQ(shown.scrolled(), scrolled);
        shown.press(Qt::Key_End, Qt::ControlModifier);
        EXPECT_EQ(shown.scrolled(), shown.bar.maximum());
        shown.press(Qt::Key_Home, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(shown.scrolled(), 0) << "not only as far as the inset";
        EXPECT_EQ(shown.view.selection(), (TextRange{0, shown.end}));
        EXPECT_EQ(shown.rectangle(0).top(), 28);
    }
    for (int step = 0; step < 4000 && shown.scrolled() < shown.bar.maximum(); ++step)
        shown.bar.triggerAction(QScrollBar::SliderPageStepAdd);
    expectEnd();
}

TEST(CodingTextViewScrolling, RevealsAnyRangeFromAnywhereAndShowsItAtTheEdgeItCameFrom)
{
    UnevenText shown(1500);
    QRandomGenerator random(4);
    EXPECT_LT(shown.laidOutCount(), 60);
    for (int step = 0; step < 100; ++step) {
        const TextRange range{random.bounded(int(shown.end) - 30), random.bounded(1, 30)};
        const auto edges = [&] { return std::pair(shown.rectangle(range.location), shown.rectangle(range.end() - 1)); };
        const int before = shown.scrolled();
        const qint64 top = shown.topCharacter();
        const auto [firstBefore, lastBefore] = edges();
        ASSERT_EQ(shown.topCharacter(), top) << "to ask for characters far away moves nothing";
        const bool wasInView = shown.page.contains(firstBefore.adjusted(0, -2, 0, 4))
            && shown.page.contains(lastBefore.adjusted(0, -2, 0, 4));
        shown.reveal(range);
        QApplication::processEvents();
        const auto [first, last] = edges();
        ASSERT_TRUE(first.top() >= 0 && last.bottom() <= shown.page.bottom()) << step;
        const bool isAtAnEdge = first.top() <= 4 || last.bottom() >= shown.page.bottom() - 7;
        ASSERT_TRUE(wasInView ? shown.scrolled() == before : isAtAnEdge) << step << ": " << first.top();
        ASSERT_LE(shown.laidOutCount(), 101);
    }
}

TEST(CodingTextViewScrolling, KeepsTheLineAtTheTopWhenTheWidthChanges)
{
    UnevenText shown(900);
    shown.reveal({30'000, 5});
    const QSize size = shown.view.size();
    const qint64 top = shown.topCharacter();
    const int offset = shown.rectangle(top).top();
    for (const int width : {400, 300, 900, 650, 1100, size.width()}) {
        shown.view.resize(width, size.height());
        QApplication::processEvents();
        EXPECT_NEAR(shown.rectangle(top).top(), offset, 1) << width; // lines stand on half pixels
    }
    EXPECT_EQ(shown.topCharacter(), top) << "and comes back to it";
}
