#include "surface/PassageSegments.h"
#include "support/NastyText.h"

#include <QColor>

#include <gtest/gtest.h>

#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

std::vector<PassageSegment> all(const PassageSegments &segments)
{
    const auto view = segments.within(0, std::numeric_limits<int>::max());
    return {view.begin(), view.end()};
}

TextHighlight randomHighlight(NastyText &random, int textLength)
{
    static const QStringList colors{u"#FF0000"_s, u"00ff00"_s, u"#0000FF"_s, u"#FFCC00"_s, u"#F00"_s, u"no colour"_s};
    const qint64 length = random.onceIn(4) ? random.position(0, textLength * 2) : random.position(-1, 11);
    return {QUuid::createUuid(), {random.position(-2, textLength + 1), length}, colors[random.number(0, 5)], u"name"_s};
}

/// Changes of the kind that coding makes, and larger ones.
void change(QList<TextHighlight> &highlights, NastyText &random, int textLength)
{
    const int place = random.number(0, int(highlights.size()));
    const bool isOnOne = place < highlights.size();
    const int kind = random.number(0, 5);
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
}

/// What each unit shows when every passage is painted over the ones before; 0 is nothing.
std::vector<QRgb> painted(const QList<TextHighlight> &highlights, qint64 textLength)
{
    std::vector<QRgb> units(size_t(textLength), 0);
    for (const auto &[id, range, given, name] : highlights) {
        const QString hex = given.startsWith(u'#') ? given : u'#' + given;
        if (range.location < 0 || hex.size() != 7 || !QColor(hex).isValid())
            continue;
        for (qint64 unit = range.location; unit < textLength && unit - range.location < range.length; ++unit)
            units[size_t(unit)] = QColor(hex).rgb();
    }
    return units;
}

} // namespace

TEST(PassageSegments, ShowWhatPaintingOnePassageAfterTheOtherShows)
{
    NastyText random(42);
    for (int round = 0; round < 60; ++round) {
        const int length = random.number(1, 299);
        PassageSegments changed;
        changed.reset(length);
        QList<TextHighlight> highlights;
        std::vector<QRgb> units(size_t(length), 0);
        for (int step = 0; step < 40; ++step) {
            SCOPED_TRACE(testing::Message() << round << "/" << step);
            const QList<TextHighlight> former = highlights;
            const auto before = all(changed);
            change(highlights, random, length);
            const auto unitsBefore = std::exchange(units, painted(highlights, length));
            ASSERT_EQ(changed.assign(highlights), highlights != former);
            const auto after = all(changed);
            PassageSegments fresh;
            fresh.reset(length);
            fresh.assign(highlights);
            ASSERT_EQ(after, all(fresh)) << "a change left segments divided";
            const auto differing = differences(before, after);
            for (int unit = 0; unit < length; ++unit) {
                const auto at = changed.within(unit, unit + 1);
                ASSERT_EQ(at.empty() ? 0 : at.front().color, units[size_t(unit)]) << unit;
                ASSERT_EQ(changed.covers(unit), units[size_t(unit)] != 0) << unit;
                const bool differs =
                    std::ranges::any_of(differing, [&](TextRange range) { return range.contains(unit); });
                ASSERT_EQ(differs, unitsBefore[size_t(unit)] != units[size_t(unit)]) << unit;
            }
        }
    }
}
