#pragma once

#include <QString>

#include <array>

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
