#include "exchange/RtfKeyword.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

using Meaning = RtfKeyword::Meaning;

struct Entry {
    std::string_view name;
    Meaning meaning = Meaning::none;
    quint16 value = 0;
};

// Groups that every writer marks with \* need no entry unless their text is wanted: unknown ones are left out.
constexpr auto entries = std::to_array<Entry>({
    // Characters
    {"line", Meaning::character, '\n'},
    {"tab", Meaning::character, '\t'},
    {"emdash", Meaning::character, 0x2014},
    {"endash", Meaning::character, 0x2013},
    {"emspace", Meaning::character, 0x2003},
    {"enspace", Meaning::character, 0x2002},
    {"qmspace", Meaning::character, 0x2005},
    {"bullet", Meaning::character, 0x2022},
    {"lquote", Meaning::character, 0x2018},
    {"rquote", Meaning::character, 0x2019},
    {"ldblquote", Meaning::character, 0x201C},
    {"rdblquote", Meaning::character, 0x201D},
    {"zwj", Meaning::character, 0x200D},
    {"zwnj", Meaning::character, 0x200C},
    {"zwbo", Meaning::character, 0x200B},
    {"zwnbo", Meaning::character, 0x2060},
    {"ltrmark", Meaning::character, 0x200E},
    {"rtlmark", Meaning::character, 0x200F},
    {"u", Meaning::unicode},
    {"uc", Meaning::fallbackLength},

    // Structure of the running text
    {"par", Meaning::paragraphEnd},
    {"sect", Meaning::paragraphEnd},
    {"page", Meaning::paragraphEnd},
    {"column", Meaning::paragraphEnd},
    {"cell", Meaning::cellEnd},
    {"nestcell", Meaning::cellEnd},
    {"row", Meaning::rowEnd},
    {"nestrow", Meaning::rowEnd},

    // Formatting that decides which text there is
    {"plain", Meaning::plain},
    {"v", Meaning::hidden},
    {"deleted", Meaning::deleted},
    {"mvf", Meaning::deleted},
    {"f", Meaning::font},
    {"deff", Meaning::defaultFont},
    {"fcharset", Meaning::fontCharset},
    {"cpg", Meaning::fontCodePage},
    {"ansicpg", Meaning::documentCodePage, 1252},
    {"mac", Meaning::documentCodePage, 10000},
    {"pc", Meaning::documentCodePage, 437},
    {"pca", Meaning::documentCodePage, 850},

    // Groups that hold running text, or parts of it
    {"fonttbl", Meaning::fontTable},
    {"upr", Meaning::alternatives},
    {"ud", Meaning::textDestination},
    {"fldrslt", Meaning::textDestination},
    {"nesttableprops", Meaning::textDestination}, // holds the end of a nested row
    {"shpinst", Meaning::textDestination},
    {"do", Meaning::textDestination},
    {"listtext", Meaning::listLabel},
    {"pntext", Meaning::listLabel},
    {"shptxt", Meaning::textBox},
    {"dptxbxtext", Meaning::textBox},
    {"moMath", Meaning::textDestination},
    {"moMathPara", Meaning::textDestination},

    // The same content again for lesser readers
    {"nonesttables", Meaning::skippedDestination},
    {"nonshppict", Meaning::skippedDestination},
    {"shprslt", Meaning::skippedDestination},
    {"mmathPict", Meaning::skippedDestination},

    // Text apart from the running text
    {"header", Meaning::skippedDestination},
    {"headerf", Meaning::skippedDestination},
    {"headerl", Meaning::skippedDestination},
    {"headerr", Meaning::skippedDestination},
    {"footer", Meaning::skippedDestination},
    {"footerf", Meaning::skippedDestination},
    {"footerl", Meaning::skippedDestination},
    {"footerr", Meaning::skippedDestination},
    {"footnote", Meaning::skippedDestination},
    {"ftnsep", Meaning::skippedDestination},
    {"ftnsepc", Meaning::skippedDestination},
    {"ftncn", Meaning::skippedDestination},
    {"aftnsep", Meaning::skippedDestination},
    {"aftnsepc", Meaning::skippedDestination},
    {"aftncn", Meaning::skippedDestination},
    {"annotation", Meaning::skippedDestination},
    {"atnid", Meaning::skippedDestination},
    {"atnauthor", Meaning::skippedDestination},
    {"xe", Meaning::skippedDestination},
    {"rxe", Meaning::skippedDestination},
    {"txe", Meaning::skippedDestination},
    {"tc", Meaning::skippedDestination},
    {"tcn", Meaning::skippedDestination},

    // Pictures, objects and fields
    {"pict", Meaning::skippedDestination},
    {"shppict", Meaning::skippedDestination},
    {"NeXTGraphic", Meaning::skippedDestination},
    {"object", Meaning::skippedDestination},
    {"objdata", Meaning::skippedDestination},
    {"objclass", Meaning::skippedDestination},
    {"objname", Meaning::skippedDestination},
    {"sp", Meaning::skippedDestination},
    {"background", Meaning::skippedDestination},
    {"fldinst", Meaning::skippedDestination},
    {"formfield", Meaning::skippedDestination},
    {"bkmkstart", Meaning::skippedDestination},
    {"bkmkend", Meaning::skippedDestination},

    // Tables and properties of the document
    {"fontemb", Meaning::skippedDestination},
    {"fontfile", Meaning::skippedDestination},
    {"falt", Meaning::skippedDestination},
    {"colortbl", Meaning::skippedDestination},
    {"filetbl", Meaning::skippedDestination},
    {"stylesheet", Meaning::skippedDestination},
    {"listtable", Meaning::skippedDestination},
    {"listoverridetable", Meaning::skippedDestination},
    {"pn", Meaning::skippedDestination},
    {"pnseclvl", Meaning::skippedDestination},
    {"pntxta", Meaning::skippedDestination},
    {"pntxtb", Meaning::skippedDestination},
    {"revtbl", Meaning::skippedDestination},
    {"rsidtbl", Meaning::skippedDestination},
    {"generator", Meaning::skippedDestination},
    {"info", Meaning::skippedDestination},
    {"private", Meaning::skippedDestination},
    {"themedata", Meaning::skippedDestination},
    {"datastore", Meaning::skippedDestination},
    {"xmlnstbl", Meaning::skippedDestination},

    // Properties of formulas, some of which hold brackets and the like
    {"maccPr", Meaning::skippedDestination},
    {"mbarPr", Meaning::skippedDestination},
    {"mborderBoxPr", Meaning::skippedDestination},
    {"mboxPr", Meaning::skippedDestination},
    {"mctrlPr", Meaning::skippedDestination},
    {"mdPr", Meaning::skippedDestination},
    {"meqArrPr", Meaning::skippedDestination},
    {"mfPr", Meaning::skippedDestination},
    {"mfuncPr", Meaning::skippedDestination},
    {"mgroupChrPr", Meaning::skippedDestination},
    {"mlimLowPr", Meaning::skippedDestination},
    {"mlimUppPr", Meaning::skippedDestination},
    {"mmPr", Meaning::skippedDestination},
    {"mmathPr", Meaning::skippedDestination},
    {"mnaryPr", Meaning::skippedDestination},
    {"moMathParaPr", Meaning::skippedDestination},
    {"mphantPr", Meaning::skippedDestination},
    {"mradPr", Meaning::skippedDestination},
    {"msPrePr", Meaning::skippedDestination},
    {"msSubPr", Meaning::skippedDestination},
    {"msSubSupPr", Meaning::skippedDestination},
    {"msSupPr", Meaning::skippedDestination},
});

// The FNV-1a hash of 32 bits.
constexpr std::size_t hashOf(std::string_view name)
{
    quint32 hash = 0x811C9DC5;
    for (const char letter : name)
        hash = (hash ^ quint32(uchar(letter))) * 0x01000193;
    return hash ^ hash >> 15;
}

constexpr std::size_t slotCount = 1024;
static_assert(entries.size() < 255 && entries.size() * 2 < slotCount, "probing must meet free slots soon");

// Each slot holds the place of an entry counted from 1; an entry whose slot is taken goes to the next free one.
constexpr std::array<quint8, slotCount> slotTable = [] {
    std::array<quint8, slotCount> table{};
    quint8 place = 0;
    for (const Entry &entry : entries) {
        std::size_t slot = hashOf(entry.name) % slotCount;
        while (table[slot] != 0)
            slot = (slot + 1) % slotCount;
        table[slot] = ++place;
    }
    return table;
}();

constexpr std::size_t longestName = [] {
    std::size_t length = 0;
    for (const Entry &entry : entries)
        length = std::max(length, entry.name.size());
    return length;
}();

} // namespace

RtfKeyword RtfKeyword::named(QByteArrayView name)
{
    const std::string_view wanted(name.data(), std::size_t(name.size()));
    if (wanted.size() > longestName)
        return {};
    for (std::size_t slot = hashOf(wanted) % slotCount; slotTable[slot] != 0; slot = (slot + 1) % slotCount) {
        const Entry &entry = entries[slotTable[slot] - 1U];
        if (entry.name == wanted)
            return {entry.meaning, entry.value};
    }
    return {};
}
