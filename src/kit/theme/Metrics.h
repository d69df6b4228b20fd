#pragma once

/// Distances and radii of the window, in logical pixels. Heights are minima: what holds text grows with its font.
namespace Metrics {

inline constexpr double barRadius = 2;
inline constexpr double passageRadius = 3;
inline constexpr double menuItemRadius = 5;
inline constexpr double rowRadius = 6;
inline constexpr double smallButtonRadius = 6;
inline constexpr double controlRadius = 7;
inline constexpr double listRowRadius = 7;
inline constexpr double memoRadius = 8;
inline constexpr double menuRadius = 9;
inline constexpr double popoverRadius = 10;
inline constexpr double sheetRadius = 12;

inline constexpr int columnHeadHeight = 46;
inline constexpr int controlHeight = 28;
inline constexpr int smallControlHeight = 24;
inline constexpr int plainButtonHeight = 26;
inline constexpr int menuItemHeight = 26;
inline constexpr int rowHeight = 28;
inline constexpr int pickerRowHeight = 26;
inline constexpr int findBarHeight = 44;

inline constexpr int dialogWidth = 340;
inline constexpr int dialogPadding = 20;
inline constexpr int controlSpacing = 8;
inline constexpr int popoverWidth = 280;
inline constexpr int dotDiameter = 9;

inline constexpr int ringGap = 2; ///< between a control and its focus ring
inline constexpr int ringWidth = 2;
inline constexpr int haloWidth = 3; ///< around a focused field
inline constexpr int ringReach = ringGap + ringWidth;

/// The height of a row that is `stated` high with the usual font and must hold text that is `fontHeight` high.
[[nodiscard]] constexpr int rowHeightFor(int stated, int fontHeight)
{
    constexpr int air = 12;
    return fontHeight + air > stated ? fontHeight + air : stated;
}

} // namespace Metrics

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
