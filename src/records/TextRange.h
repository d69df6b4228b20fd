#pragma once

#include <QtGlobal>

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
