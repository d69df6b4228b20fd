#pragma once

#include <QtGlobal>

#include <limits>

/// For positions from a file, which may be any number: a sum that overflows becomes the nearest qint64.
[[nodiscard]] constexpr qint64 saturatingAdd(qint64 a, qint64 b) noexcept
{
    constexpr qint64 highest = std::numeric_limits<qint64>::max();
    constexpr qint64 lowest = std::numeric_limits<qint64>::min();
    if (b > 0 && a > highest - b)
        return highest;
    if (b < 0 && a < lowest - b)
        return lowest;
    return a + b;
}

/// `end` − `start`, for an `end` that isn't before `start`.
[[nodiscard]] constexpr qint64 saturatingDistance(qint64 start, qint64 end) noexcept
{
    if (start < 0 && end > std::numeric_limits<qint64>::max() + start)
        return std::numeric_limits<qint64>::max();
    return end - start;
}
