#pragma once

#include <QtGlobal>

#include <algorithm>
#include <vector>

/// A stretch of a document's plain text, in UTF-16 code units. May lie outside the text until it has been clamped.
struct TextRange {
    qint64 location = 0;
    qint64 length = 0;

    [[nodiscard]] constexpr qint64 end() const noexcept { return location + length; }
    [[nodiscard]] constexpr bool contains(qint64 offset) const noexcept { return offset >= location && offset < end(); }
    /// Whether the two share at least one unit; ranges that merely touch don't.
    [[nodiscard]] constexpr bool overlaps(const TextRange &other) const noexcept
    {
        return location < other.end() && other.location < end();
    }
    bool operator==(const TextRange &) const = default;
};

/// Sorts stretches by their starts and joins those that overlap or touch, or lie no more than `crack` apart. `Start`
/// and `End` are members of a stretch. O(n log n).
template <auto Start, auto End, typename Stretch, typename Distance = int>
[[nodiscard]] std::vector<Stretch> united(std::vector<Stretch> stretches, Distance crack = {})
{
    std::ranges::sort(stretches, {}, Start);
    std::vector<Stretch> result;
    for (const Stretch &stretch : stretches) {
        if (!result.empty() && stretch.*Start <= result.back().*End + crack)
            result.back().*End = std::max(result.back().*End, stretch.*End);
        else
            result.push_back(stretch);
    }
    return result;
}
