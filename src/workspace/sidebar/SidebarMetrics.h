#pragma once

#include "kit/theme/Metrics.h"

#include <QRect>

/// Distances in the sidebar, in logical pixels. Rectangles are for a layout from left to right.
namespace SidebarMetrics {

inline constexpr int minWidth = 185;
inline constexpr int defaultWidth = 210;
inline constexpr int maxWidth = 280;

inline constexpr int rowInset = 8; ///< of a row's fill from the column's edges
inline constexpr int contentLine = 16; ///< where heads, hint and icons begin
inline constexpr int markEnd = 29; ///< where icons and dots end
inline constexpr int markGap = 8; ///< between a mark and its name, and between a name and its count
inline constexpr int levelIndent = 14;

/// What a row shows between its fill's padding: mark, name and count.
[[nodiscard]] constexpr QRect content(const QRect &row, int depth)
{
    return row.adjusted(contentLine + depth * levelIndent, 0, -contentLine, 0);
}

/// From behind the mark to the end of the content.
[[nodiscard]] constexpr QRect name(const QRect &row, int depth)
{
    return content(row, depth).adjusted(markEnd + markGap - contentLine, 0, 0, 0);
}

/// A square that ends where marks end, in the middle of the row's height.
[[nodiscard]] constexpr QRect mark(const QRect &row, int depth, int side)
{
    const int end = row.left() + markEnd + depth * levelIndent;
    return {end - side, row.top() + (row.height() - side + 1) / 2, side, side};
}

} // namespace SidebarMetrics
