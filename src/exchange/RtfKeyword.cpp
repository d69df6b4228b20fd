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

constexpr auto words = std::to_array<Entry>({
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
});

// Groups that are left out, as are unknown ones marked with \*: destinations that every writer marks so aren't listed.
constexpr std::string_view skippedDestinations =
    // The same content again, for older readers
    "nonesttables nonshppict shprslt mmathPict "
    // Text apart from the running text
    "header headerf headerl headerr footer footerf footerl footerr footnote ftnsep ftnsepc ftncn aftnsep aftnsepc "
    "aftncn annotation atnid atnauthor xe rxe txe tc tcn "
    // Pictures, objects and fields
    "pict shppict NeXTGraphic object objdata objclass objname sp background fldinst formfield bkmkstart bkmkend "
    // Tables and properties of the document
    "fontemb fontfile falt colortbl filetbl stylesheet listtable listoverridetable pn pnseclvl pntxta pntxtb "
    "revtbl rsidtbl generator info private themedata datastore xmlnstbl "
    // Properties of formulas, some of which hold brackets and the like
    "maccPr mbarPr mborderBoxPr mboxPr mctrlPr mdPr meqArrPr mfPr mfuncPr mgroupChrPr mlimLowPr mlimUppPr mmPr "
    "mmathPr mnaryPr moMathParaPr mphantPr mradPr msPrePr msSubPr msSubSupPr msSupPr";

// The FNV-1a hash of 32 bits.
constexpr std::size_t hashOf(std::string_view name)
{
    quint32 hash = 0x811C9DC5;
    for (const char letter : name)
        hash = (hash ^ quint32(uchar(letter))) * 0x01000193;
    return hash ^ hash >> 15;
}

using Table = std::array<Entry, 1024>;

// A hash table with open addressing: an entry whose slot is taken goes to the next free one. Several times as fast as
// QHash, and a document holds a word every ten bytes.
constexpr Table table = [] {
    Table result{};
    const auto add = [&result](const Entry &entry) {
        std::size_t slot = hashOf(entry.name) % result.size();
        while (!result[slot].name.empty())
            slot = (slot + 1) % result.size();
        result[slot] = entry;
    };
    for (const Entry &entry : words)
        add(entry);
    for (std::string_view names = skippedDestinations; !names.empty();) {
        const std::string_view name = names.substr(0, names.find(' '));
        add({name, Meaning::skippedDestination});
        names.remove_prefix(std::min(name.size() + 1, names.size()));
    }
    return result;
}();
static_assert(std::ranges::count(table, std::string_view(), &Entry::name) > 512, "a search soon meets a free slot");

} // namespace

RtfKeyword RtfKeyword::named(QByteArrayView name)
{
    const std::string_view wanted(name.data(), std::size_t(name.size()));
    std::size_t slot = hashOf(wanted) % table.size();
    while (!table[slot].name.empty() && table[slot].name != wanted)
        slot = (slot + 1) % table.size();
    return {table[slot].meaning, table[slot].value};
}
