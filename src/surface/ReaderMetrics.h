#pragma once

/// Measures of the reader's page, in logical pixels.
namespace ReaderMetrics {

inline constexpr int columnWidth = 660;
inline constexpr int minSideInset = 32;
inline constexpr int verticalInset = 28;
inline constexpr double lineDistance = 5.5; ///< added below each line's own height
inline constexpr double fontPixels = 14.5;

// A passage's band is a little higher than the letters and leaves a gap to the next line's band.
inline constexpr double bandAboveAscent = 1.5;
inline constexpr double bandBelowDescent = 2.5;
inline constexpr double bandRadius = 3;
inline constexpr double underlineThickness = 1.5;

inline constexpr double bandAlpha = 0.16;
inline constexpr double underlineAlpha = 0.9;
inline constexpr double flashAlpha = 0.45;

/// The distance of the column from either edge of a page of that width.
[[nodiscard]] constexpr int sideInset(int pageWidth)
{
    const int centred = (pageWidth - columnWidth) / 2;
    return centred > minSideInset ? centred : minSideInset;
}

} // namespace ReaderMetrics
