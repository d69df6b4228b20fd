#pragma once

/// Distances that the lists of the middle column share, in logical pixels.
namespace ListMetrics {

inline constexpr int minColumnWidth = 240;
inline constexpr int defaultColumnWidth = 285;
inline constexpr int maxColumnWidth = 380;

inline constexpr int rowInset = 10; ///< of grounds, fields and memos from the column's edges
inline constexpr int contentInset = 18; ///< of a row's content from the column's edges
inline constexpr int rowGap = 2; ///< above each row's ground, part of the row
inline constexpr int airAbove = 6; ///< above the first row, below a hairline

} // namespace ListMetrics
