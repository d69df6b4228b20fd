#pragma once

#include <array>

/// The characters that the signs of symbol fonts stand for, by byte. Signs that Unicode doesn't have are U+FFFD.
namespace RtfSymbolFont {

/// Those of "Symbol": Greek and mathematics.
[[nodiscard]] std::array<char16_t, 256> symbolCharacters();
/// Those of "Wingdings" that lists and automatic corrections use; the rest are little pictures.
[[nodiscard]] std::array<char16_t, 256> dingbatCharacters();

} // namespace RtfSymbolFont
