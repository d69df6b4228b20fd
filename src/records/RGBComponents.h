#pragma once

#include <QStringView>

#include <optional>

/// A colour as three numbers from 0 to 1, in sRGB.
struct RGBComponents {
    double red = 0;
    double green = 0;
    double blue = 0;

    /// Parses six hexadecimal digits of either case, with or without a leading "#", blanks around them allowed.
    /// Nothing for every other text: neither three nor eight digits are a stored colour.
    [[nodiscard]] static std::optional<RGBComponents> from(QStringView hex);

    bool operator==(const RGBComponents &) const = default;
};
