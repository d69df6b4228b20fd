#pragma once

#include "kit/theme/Metrics.h"

#include <QRect>

/// Distances in the sidebar, in logical pixels. Rectangles are for a layout from left to right, not mirrored.
namespace SidebarMetrics {

inline constexpr int minWidth = 185;
inline constexpr int defaultWidth = 210;
inline constexpr int maxWidth = 280;

inline constexpr int rowInset = 8; ///< of a row's fill from the column's edges
inline constexpr int contentLine = 16; ///< where heads, hint and icons begin
inline constexpr int markEnd = 29; ///< where icons and dots end
inline constexpr int markGap = 8; ///< between a mark and its name, and between a name and its count
inline constexpr int levelIndent = 14;

/// The room for the name and, at its end, the count.
[[nodiscard]] constexpr QRect name(const QRect &row, int depth)
{
    return row.adjusted(markEnd + markGap + depth * levelIndent, 0, -contentLine, 0);
}

} // namespace SidebarMetrics
