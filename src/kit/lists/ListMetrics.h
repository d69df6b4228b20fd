#pragma once

/// Distances that the lists of the middle column share, in logical pixels.
namespace ListMetrics {

inline constexpr int minColumnWidth = 240;
inline constexpr int defaultColumnWidth = 285;
inline constexpr int maxColumnWidth = 380;

inline constexpr int rowInset = 10; ///< of rows, fields and memos from the column's edges
inline constexpr int contentInset = 18; ///< of what stands in a row
inline constexpr int rowGap = 2; ///< above each row's fill, part of the row

} // namespace ListMetrics
