#include "surface/PassageSegments.h"
#include "kit/lists/BlockHeights.h"

#include <QColor>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 maximum = std::numeric_limits<qint64>::max();
constexpr qint64 minimum = std::numeric_limits<qint64>::min();
constexpr size_t nowhere = std::numeric_limits<size_t>::max();

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
    static const QStringList colors{u"#FF0000"_s, u"00ff00"_s, u"#0000FF"_s, u"#FFCC00"_s, u"#F00"_s, u"no colour"_s};
    const auto orExtreme = [&random](qint64 ordinary) {
        const int kind = random.bounded(60);
        return kind == 0 ? maximum : kind == 1 ? minimum : ordinary;
    };
    const qint64 location = random.bounded(-2, textLength + 2);
    const qint64 length = random.bounded(4) == 0 ? random.bounded(textLength * 2) : random.bounded(-1, 12);
    return {QUuid::createUuid(), {orExtreme(location), orExtreme(length)}, colors[random.bounded(int(colors.size()))],
        u"name"_s};
}

/// Changes of the kind that coding makes, and larger ones.
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

/// What each unit shows when every passage is painted over the ones before; 0 is nothing.
struct Painted {
    Painted(const QList<TextHighlight> &highlights, qint64 textLength)
        : units(size_t(textLength), 0),
          first(units.size(), nowhere)
    {
        for (const TextHighlight &passage : highlights) {
            const QString hex = passage.colorHex.startsWith(u'#') ? passage.colorHex : u'#' + passage.colorHex;
            const QColor color(hex);
            if (passage.range.location < 0 || hex.size() != 7 || !color.isValid())
                continue;
            for (qint64 unit = passage.range.location;
                 unit < textLength && unit - passage.range.location < passage.range.length; ++unit) {
                units[size_t(unit)] = color.rgb();
                first[size_t(unit)] = std::min(first[size_t(unit)], size_t(&passage - highlights.data()));
            }
        }
    }
    std::vector<QRgb> units;
    std::vector<size_t> first; ///< index of the first passage there
};

} // namespace

TEST(PassageSegments, ShowWhatPaintingOnePassageAfterTheOtherShows)
{
    QRandomGenerator random(42);
    for (int round = 0; round < 60; ++round) {
        const int length = random.bounded(1, 300);
        PassageSegments changed;
        changed.reset(length);
        QList<TextHighlight> highlights;
        for (int step = 0; step < 40; ++step) {
            const QList<TextHighlight> former = highlights;
            change(highlights, random, length);
            const auto before = all(changed);
            ASSERT_EQ(changed.assign(highlights), highlights != former);
            const auto after = all(changed);
            const Painted painted(highlights, length);
            ASSERT_EQ(unitsOf(after, length), painted.units) << round << "/" << step;

            PassageSegments fresh;
            fresh.reset(length);
            fresh.assign(highlights);
            ASSERT_EQ(after, all(fresh)) << "a change left segments divided: " << round << "/" << step;

            std::vector<bool> differs(size_t(length), false);
            for (const TextRange &range : differences(before, after))
                std::fill_n(differs.begin() + range.location, range.length, true);
            const auto unitsBefore = unitsOf(before, length);
            for (int unit = 0; unit < length; ++unit) {
                ASSERT_EQ(differs[size_t(unit)], unitsBefore[size_t(unit)] != painted.units[size_t(unit)]);
                ASSERT_EQ(changed.covers(unit), painted.units[size_t(unit)] != 0) << unit;
                const int other = random.bounded(length);
                const TextHighlight *first = changed.firstAt(unit, other);
                const size_t wanted = std::min(painted.first[size_t(unit)], painted.first[size_t(other)]);
                ASSERT_EQ(first ? size_t(first - changed.highlights().data()) : nowhere, wanted) << unit;
            }
            const int start = random.bounded(length);
            const int end = random.bounded(start, length + 1);
            const auto touches = [&](const PassageSegment &segment) {
                return segment.start < end && start < segment.end;
            };
            ASSERT_EQ(std::ssize(changed.within(start, end)), std::ranges::count_if(after, touches));
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
