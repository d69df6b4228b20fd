#include "surface/PassageSegments.h"

#include "records/CodePalette.h"

#include <QColor>

#include <algorithm>
#include <limits>
#include <queue>

namespace {

/// Whether both are equal. Two lists made from the same codes share their strings, so pointers are compared first.
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

    // The colour at a position, which only rises from call to call. 0 means none: every colour here is opaque.
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

    int from = m_textLength;
    int to = 0;
    const auto include = [&from, &to](const Passage &passage) {
        if (passage.start < passage.end) {
            from = std::min(from, passage.start);
            to = std::max(to, passage.end);
        }
    };
    std::for_each(oldBegin, oldEnd, include);
    std::ranges::for_each(changed, include);

    m_passages.insert(m_passages.erase(oldBegin, oldEnd), changed.begin(), changed.end());
    m_highlights = highlights;
    if (from < to)
        flattenAgain(from, to);
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

std::vector<PassageSegment> PassageSegments::flattened(int from, int to) const
{
    std::vector<int> touching; // indices into the list: the higher one lies on top
    std::vector<int> edges;
    for (size_t index = 0; index < m_passages.size(); ++index) {
        const Passage &passage = m_passages[index];
        const int start = std::max(passage.start, from);
        const int end = std::min(passage.end, to);
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

void PassageSegments::flattenAgain(int from, int to)
{
    // One unit more on each side, so that a neighbour of the same colour joins.
    from = std::max(from - 1, 0);
    to = to < m_textLength ? to + 1 : to;
    std::vector<PassageSegment> fresh = flattened(from, to);
    const auto stale = within(from, to);
    if (!stale.empty()) { // what reaches beyond the range stays
        if (const PassageSegment &head = stale.front(); head.start < from)
            fresh.front().start = head.start;
        if (const PassageSegment &tail = stale.back(); tail.end > to)
            fresh.back().end = tail.end;
    }
    const auto first = m_segments.begin() + (stale.data() - m_segments.data());
    const auto rest = m_segments.erase(first, first + std::ssize(stale));
    m_segments.insert(rest, fresh.begin(), fresh.end());
}
