#include "surface/PassageSegments.h"
#include "kit/lists/BlockHeights.h"

#include <QColor>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 huge = std::numeric_limits<qint64>::max();
constexpr qint64 least = std::numeric_limits<qint64>::min();

TextHighlight highlight(qint64 location, qint64 length, const QString &colorHex)
{
    return {QUuid::createUuid(), {location, length}, colorHex, u"name"_s};
}

/// What each unit shows, found by drawing every passage over the ones before. 0 is nothing.
std::vector<QRgb> drawnUnits(const QList<TextHighlight> &highlights, qint64 textLength)
{
    std::vector<QRgb> units(size_t(textLength), 0);
    for (const TextHighlight &passage : highlights) {
        const QColor color(passage.colorHex);
        if (passage.range.location < 0 || !color.isValid())
            continue;
        for (qint64 unit = passage.range.location;
             unit < textLength && unit - passage.range.location < passage.range.length; ++unit)
            units[size_t(unit)] = color.rgb();
    }
    return units;
}

std::vector<QRgb> unitsOf(std::span<const PassageSegment> segments, qint64 textLength)
{
    std::vector<QRgb> units(size_t(textLength), 0);
    for (const PassageSegment &segment : segments)
        std::fill(units.begin() + segment.start, units.begin() + segment.end, segment.color);
    return units;
}

std::vector<PassageSegment> all(const PassageSegments &segments)
{
    const auto view = segments.within(0, std::numeric_limits<int>::max());
    return {view.begin(), view.end()};
}

TextHighlight randomHighlight(QRandomGenerator &random, int textLength)
{
    static const QStringList colors{u"#FF0000"_s, u"#00FF00"_s, u"#0000FF"_s, u"#FFCC00"_s, u"no colour"_s};
    const qint64 location = random.bounded(-2, textLength + 2);
    const qint64 length = random.bounded(4) == 0 ? random.bounded(textLength * 2) : random.bounded(-1, 12);
    return highlight(location, length, colors[random.bounded(int(colors.size()))]);
}

/// As researchers do it, and worse.
void change(QList<TextHighlight> &highlights, QRandomGenerator &random, int textLength)
{
    const int place = random.bounded(int(highlights.size()) + 1);
    const bool isOnOne = place < highlights.size();
    const int kind = random.bounded(6);
    if (kind == 0)
        highlights.insert(place, randomHighlight(random, textLength));
    else if (kind == 1 && isOnOne)
        highlights.removeAt(place);
    else if (kind == 2 && isOnOne)
        highlights[place].colorHex = u"#123456"_s;
    else if (kind == 3 && isOnOne)
        highlights.swapItemsAt(place, 0);
    else if (kind == 4)
        std::generate_n(std::back_inserter(highlights), 50, [&] { return randomHighlight(random, textLength); });
    else if (highlights.size() > 60)
        highlights.remove(10, 40);
    else if (random.bounded(10) == 0)
        highlights.clear();
}

} // namespace

TEST(PassageSegments, AreDrawnOnlyInsideTheText)
{
    PassageSegments segments;
    segments.reset(10);
    const auto isDrawn = [&](qint64 location, qint64 length, const QString &color = u"#FF0000"_s) {
        segments.assign({highlight(location, length, color)});
        EXPECT_EQ(segments.firstAt(9, 8) != nullptr, !all(segments).empty());
        return !all(segments).empty();
    };
    for (const auto &[location, length] : {std::pair{huge, huge}, {least, huge}, {9, least}, {-1, 20}, {10, 1}})
        EXPECT_FALSE(isDrawn(location, length)) << location;
    EXPECT_FALSE(isDrawn(9, 1, u"#F00"_s)) << "no colour";
    EXPECT_TRUE(isDrawn(9, 5, u"FF0000"_s)) << "past the end";
    EXPECT_TRUE(isDrawn(9, huge, u"#ff0000"_s)) << "a sum that overflows";
}

TEST(PassageSegments, ShowTheLaterPassageWhereTwoOverlap)
{
    PassageSegments segments;
    segments.reset(100);
    segments.assign({highlight(10, 30, u"#FF0000"_s), highlight(20, 10, u"#0000FF"_s)});
    EXPECT_EQ(
        all(segments), (std::vector<PassageSegment>{{10, 20, 0xFFFF0000}, {20, 30, 0xFF0000FF}, {30, 40, 0xFFFF0000}}));
    ASSERT_NE(segments.firstAt(25, 24), nullptr);
    EXPECT_EQ(segments.firstAt(25, 24)->range.location, 10) << "the first in the list is taken, not the one that shows";
    EXPECT_EQ(segments.firstAt(40, 40), nullptr);
    for (const auto &[start, end, count] : {std::tuple(0, 10, 0U), {40, 50, 0U}, {19, 31, 3U}, {20, 30, 1U}})
        EXPECT_EQ(segments.within(start, end).size(), count) << start;
    EXPECT_TRUE(segments.covers(10) && !segments.covers(40) && !segments.covers(-1));
}

TEST(PassageSegments, StayWhatDrawingOneAfterTheOtherGives)
{
    QRandomGenerator random(42);
    for (int round = 0; round < 60; ++round) {
        const int textLength = random.bounded(1, 300);
        PassageSegments changed;
        changed.reset(textLength);
        QList<TextHighlight> highlights;
        for (int step = 0; step < 40; ++step) {
            change(highlights, random, textLength);
            const auto before = all(changed);
            changed.assign(highlights);
            const auto after = all(changed);
            ASSERT_EQ(unitsOf(after, textLength), drawnUnits(highlights, textLength)) << round << "/" << step;

            PassageSegments fresh;
            fresh.reset(textLength);
            fresh.assign(highlights);
            ASSERT_EQ(after, all(fresh)) << "changes leave splinters: " << round << "/" << step;

            const auto unitsBefore = unitsOf(before, textLength);
            const auto unitsAfter = unitsOf(after, textLength);
            std::vector<bool> differs(size_t(textLength), false);
            for (const TextRange &range : differences(before, after))
                std::fill_n(differs.begin() + range.location, range.length, true);
            for (size_t unit = 0; unit < differs.size(); ++unit)
                ASSERT_EQ(differs[unit], unitsBefore[unit] != unitsAfter[unit]) << round << "/" << step;
        }
    }
}

TEST(BlockHeights, AnswerAsAPlainListOfHeightsDoes)
{
    QRandomGenerator random(3);
    for (int round = 0; round < 60; ++round) {
        std::vector<int> plain(size_t(random.bounded(1, 70)));
        std::ranges::generate(plain, [&random] { return random.bounded(1, 40); });
        BlockHeights heights(plain);
        for (int step = 0; step < 30; ++step) {
            const int block = random.bounded(int(plain.size()));
            plain[size_t(block)] = random.bounded(1, 40);
            heights.setHeight(block, plain[size_t(block)]);
            int top = 0;
            for (int index = 0; index < int(plain.size()); top += plain[size_t(index++)]) {
                ASSERT_EQ(heights.top(index), top);
                ASSERT_EQ(heights.height(index), plain[size_t(index)]);
                ASSERT_EQ(heights.blockAt(top), index);
                ASSERT_EQ(heights.blockAt(top + plain[size_t(index)] - 1), index);
            }
            ASSERT_EQ(heights.total(), top);
            ASSERT_EQ(heights.blockAt(-5), 0);
            ASSERT_EQ(heights.blockAt(top + 5), int(plain.size()) - 1);
        }
    }
}
