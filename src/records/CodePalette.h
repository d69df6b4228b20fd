#pragma once

#include <QString>
#include <QStringView>

#include <array>
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

/// A named colour that a code can be given. `hex` is its identity: "#" and six upper-case digits.
struct PaletteColor {
    QString name;
    QString hex;

    bool operator==(const PaletteColor &) const = default;
};

/// The nine colours that new codes take in turn and that menus offer, in this order.
namespace CodePalette {
[[nodiscard]] const std::array<PaletteColor, 9> &colors();
/// The colour of a new code in a project that has `codeCount` codes.
[[nodiscard]] const QString &hexForNewCode(qsizetype codeCount);
} // namespace CodePalette
