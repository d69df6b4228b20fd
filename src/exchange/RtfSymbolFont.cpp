#include "exchange/RtfSymbolFont.h"

#include <QChar>

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

using CharacterTable = std::array<char16_t, 256>;

constexpr CharacterTable blankTable()
{
    CharacterTable table{};
    table.fill(QChar::ReplacementCharacter);
    table['\t'] = u'\t';
    table[0x20] = u' ';
    return table;
}

// Bytes 0x20 to 0x7E
constexpr std::u16string_view lowerSymbols = u" !\u2200#\u2203%&\u220B()\u2217+,\u2212./0123456789:;<=>?"
                                             u"\u2245ΑΒΧΔΕΦΓΗΙ\u03D1ΚΛΜΝΟΠΘΡΣΤΥ\u03C2ΩΞΨΖ[\u2234]\u22A5_"
                                             u"\u203Eαβχδεφγηι\u03D5κλμνοπθρστυ\u03D6ωξψζ{|}\u223C";

// Bytes 0xA0 to 0xFE
constexpr std::u16string_view upperSymbols =
    u"\u20AC\u03D2\u2032\u2264\u2044\u221E\u0192\u2663\u2666\u2665\u2660\u2194\u2190\u2191\u2192\u2193"
    u"\u00B0\u00B1\u2033\u2265\u00D7\u221D\u2202\u2022\u00F7\u2260\u2261\u2248\u2026\u23D0\u23AF\u21B5"
    u"\u2135\u2111\u211C\u2118\u2297\u2295\u2205\u2229\u222A\u2283\u2287\u2284\u2282\u2286\u2208\u2209"
    u"\u2220\u2207\u00AE\u00A9\u2122\u220F\u221A\u22C5\u00AC\u2227\u2228\u21D4\u21D0\u21D1\u21D2\u21D3"
    u"\u25CA\u27E8\u00AE\u00A9\u2122\u2211\u239B\u239C\u239D\u23A1\u23A2\u23A3\u23A7\u23A8\u23A9\u23AA"
    u"\uFFFD\u27E9\u222B\u2320\u23AE\u2321\u239E\u239F\u23A0\u23A4\u23A5\u23A6\u23AB\u23AC\u23AD";

static_assert(lowerSymbols.size() == 0x7F - 0x20 && upperSymbols.size() == 0xFF - 0xA0);

constexpr auto dingbats = std::to_array<std::pair<int, char16_t>>({
    {0x4A, u'\u263A'}, // smiling face
    {0x4C, u'\u2639'}, // frowning face
    {0x6C, u'\u25CF'}, // circle
    {0x6E, u'\u25A0'}, // square
    {0x6F, u'\u25A1'}, // open square
    {0x71, u'\u2751'}, // shadowed square
    {0x72, u'\u2752'}, // shadowed square
    {0x75, u'\u25C6'}, // diamond
    {0x76, u'\u2756'}, // four diamonds
    {0x9F, u'\u2022'}, // bullet
    {0xA0, u'\u00A0'}, {0xA7, u'\u25AA'}, // small square
    {0xA8, u'\u25FB'}, // open square
    {0xD8, u'\u27A2'}, // arrowhead
    {0xDF, u'\u2190'}, // arrows
    {0xE0, u'\u2192'}, {0xE1, u'\u2191'}, {0xE2, u'\u2193'}, {0xE8, u'\u2794'}, {0xF0, u'\u21E8'},
    {0xFB, u'\u2718'}, // cross
    {0xFC, u'\u2714'}, // check mark
    {0xFD, u'\u2612'}, // crossed box
    {0xFE, u'\u2611'}, // checked box
});

} // namespace

CharacterTable RtfSymbolFont::symbolCharacters()
{
    CharacterTable table = blankTable();
    std::ranges::copy(lowerSymbols, table.begin() + 0x20);
    std::ranges::copy(upperSymbols, table.begin() + 0xA0);
    return table;
}

CharacterTable RtfSymbolFont::dingbatCharacters()
{
    CharacterTable table = blankTable();
    for (const auto &[byte, character] : dingbats)
        table[std::size_t(byte)] = character;
    return table;
}
