#pragma once

#include <QStringView>

#include <optional>

/// A colour as three numbers from 0 to 1, in sRGB.
struct RGBComponents {
    double red = 0;
    double green = 0;
    double blue = 0;

    /// Parses six hexadecimal digits of either case, with or without a leading "#", with blanks around them
    /// or not. Absent for every other text, also for three or eight digits.
    [[nodiscard]] static std::optional<RGBComponents> from(QStringView hex);

    bool operator==(const RGBComponents &) const = default;
};
