#include "surface/PassageSegments.h"

#include "records/RGBComponents.h"

#include <QColor>

#include <algorithm>
#include <limits>
#include <queue>

namespace {

/// With more changed stretches than this, flattening everything once is quicker than each of them by itself.
constexpr size_t maxStretches = 32;

/// Equal, told quickly where the strings are shared, as they are between two lists made from the same codes.
bool isSame(const TextHighlight &one, const TextHighlight &other)
{
    const auto same = [](const QString &left, const QString &right) {
        return left.constData() == right.constData() ? left.size() == right.size() : left == right;
    };
    return one.codingID == other.codingID && one.range == other.range && same(one.colorHex, other.colorHex)
        && same(one.name, other.name);
}

} // namespace

std::vector<TextRange> differences(std::span<const PassageSegment> before, std::span<const PassageSegment> after)
{
    std::vector<int> edges;
    for (const auto segments : {before, after}) {
        for (const PassageSegment &segment : segments)
            edges.insert(edges.end(), {segment.start, segment.end});
    }
    std::ranges::sort(edges);

    // The colour at a place that no later call will be before; 0 is no opaque colour.
    const auto colorAt = [](std::span<const PassageSegment> &segments, int position) -> QRgb {
        while (!segments.empty() && segments.front().end <= position)
            segments = segments.subspan(1);
        return segments.empty() || segments.front().start > position ? 0 : segments.front().color;
    };
    std::vector<TextRange> result;
    for (size_t edge = 0; edge + 1 < edges.size(); ++edge) {
        const qint64 start = edges[edge];
        const qint64 length = edges[edge + 1] - start;
        if (length == 0 || colorAt(before, int(start)) == colorAt(after, int(start)))
            continue;
        if (!result.empty() && result.back().end() == start)
            result.back().length += length;
        else
            result.push_back({start, length});
    }
    return result;
}

std::optional<QRgb> parsedColor(const QString &colorHex)
{
    const auto components = RGBComponents::from(colorHex);
    if (!components)
        return {};
    return QColor::fromRgbF(float(components->red), float(components->green), float(components->blue)).rgb();
}

void PassageSegments::reset(qsizetype textLength)
{
    m_textLength = int(std::min<qsizetype>(textLength, std::numeric_limits<int>::max()));
    m_highlights.clear();
    m_passages.clear();
    m_segments.clear();
}

bool PassageSegments::assign(const QList<TextHighlight> &highlights)
{
    const auto [oldFirst, newFirst] =
        std::mismatch(m_highlights.cbegin(), m_highlights.cend(), highlights.cbegin(), highlights.cend(), isSame);
    if (oldFirst == m_highlights.cend() && newFirst == highlights.cend())
        return false;
    const auto [oldLast, newLast] = std::mismatch(m_highlights.crbegin(), std::make_reverse_iterator(oldFirst),
        highlights.crbegin(), std::make_reverse_iterator(newFirst), isSame);

    const auto sameInFront = oldFirst - m_highlights.cbegin();
    const auto sameAtTheEnd = oldLast - m_highlights.crbegin();
    const auto oldBegin = m_passages.begin() + sameInFront;
    const auto oldEnd = m_passages.end() - sameAtTheEnd;
    std::vector<Passage> changed;
    std::transform(newFirst, newLast.base(), std::back_inserter(changed),
        [this](const TextHighlight &highlight) { return passageOf(highlight); });

    std::vector<Stretch> stretches;
    const auto collect = [&stretches](const Passage &passage) {
        if (passage.start < passage.end)
            stretches.push_back({passage.start, passage.end});
    };
    std::for_each(oldBegin, oldEnd, collect);
    std::ranges::for_each(changed, collect);
    stretches = united(std::move(stretches));

    m_passages.insert(m_passages.erase(oldBegin, oldEnd), changed.begin(), changed.end());
    m_highlights = highlights;
    if (stretches.size() > maxStretches) {
        m_segments = flattened({0, m_textLength});
    } else {
        for (const Stretch &stretch : stretches)
            flattenAgain(stretch);
    }
    return true;
}

std::span<const PassageSegment> PassageSegments::within(int start, int end) const
{
    const auto first = std::ranges::upper_bound(m_segments, start, {}, &PassageSegment::end);
    const auto last = std::ranges::lower_bound(first, m_segments.end(), end, {}, &PassageSegment::start);
    return {first, last};
}

const TextHighlight *PassageSegments::firstAt(qint64 position, qint64 otherPosition) const
{
    const auto found = std::ranges::find_if(m_passages, [=](const Passage &passage) {
        const auto takes = [&passage](qint64 point) { return point >= passage.start && point < passage.end; };
        return takes(position) || takes(otherPosition);
    });
    return found == m_passages.end() ? nullptr : &m_highlights[found - m_passages.begin()];
}

PassageSegments::Passage PassageSegments::passageOf(const TextHighlight &highlight) const
{
    const auto [location, length] = highlight.range;
    if (location < 0 || length < 1 || location >= m_textLength)
        return {};
    const auto color = parsedColor(highlight.colorHex);
    if (!color)
        return {};
    const qint64 drawn = std::min(m_textLength - location, length); // no sum that a huge length could overflow
    return {int(location), int(location + drawn), *color};
}

std::vector<PassageSegment> PassageSegments::flattened(Stretch stretch) const
{
    std::vector<int> touching; // indices into the list, so the greater one lies on top
    std::vector<int> edges;
    for (size_t index = 0; index < m_passages.size(); ++index) {
        const Passage &passage = m_passages[index];
        const int start = std::max(passage.start, stretch.start);
        const int end = std::min(passage.end, stretch.end);
        if (start >= end)
            continue;
        touching.push_back(int(index));
        edges.insert(edges.end(), {start, end});
    }
    std::ranges::stable_sort(touching, {}, [this](int index) { return m_passages[size_t(index)].start; });
    std::ranges::sort(edges);
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());

    std::vector<PassageSegment> segments;
    std::priority_queue<int> open; // passages that have begun; ended ones leave when they come to the top
    size_t next = 0;
    for (size_t edge = 0; edge + 1 < edges.size(); ++edge) {
        const int start = edges[edge];
        while (next < touching.size() && m_passages[size_t(touching[next])].start <= start)
            open.push(touching[next++]);
        while (!open.empty() && m_passages[size_t(open.top())].end <= start)
            open.pop();
        if (open.empty())
            continue;
        const QRgb color = m_passages[size_t(open.top())].color;
        if (!segments.empty() && segments.back().end == start && segments.back().color == color)
            segments.back().end = edges[edge + 1];
        else
            segments.push_back({start, edges[edge + 1], color});
    }
    return segments;
}

void PassageSegments::flattenAgain(Stretch stretch)
{
    // One unit more on each side, so that a neighbour of the same colour joins.
    stretch = {std::max(stretch.start - 1, 0), stretch.end < m_textLength ? stretch.end + 1 : stretch.end};
    std::vector<PassageSegment> fresh = flattened(stretch);
    const auto stale = within(stretch.start, stretch.end);
    if (!stale.empty()) { // what sticks out of the stretch stays
        if (const PassageSegment &head = stale.front(); head.start < stretch.start)
            fresh.front().start = head.start;
        if (const PassageSegment &tail = stale.back(); tail.end > stretch.end)
            fresh.back().end = tail.end;
    }
    const auto first = m_segments.begin() + (stale.data() - m_segments.data());
    const auto rest = m_segments.erase(first, first + std::ssize(stale));
    m_segments.insert(rest, fresh.begin(), fresh.end());
}

std::vector<PassageSegments::Stretch> PassageSegments::united(std::vector<Stretch> stretches)
{
    std::ranges::sort(stretches, {}, &Stretch::start);
    std::vector<Stretch> result;
    for (const Stretch &stretch : stretches) {
        if (!result.empty() && stretch.start <= result.back().end)
            result.back().end = std::max(result.back().end, stretch.end);
        else
            result.push_back(stretch);
    }
    return result;
}
