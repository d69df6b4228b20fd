#include "exchange/RtfCodePage.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

namespace {

constexpr char16_t replacement = QChar::ReplacementCharacter;

using CharacterTable = std::array<char16_t, 256>;

// The code pages of Windows and the Macintosh in which bytes below 0x7F are ASCII.
constexpr auto knownPages =
    std::to_array({437, 720, 737, 775, 819, 850, 852, 855, 857, 858, 860, 861, 862, 863, 864, 865, 866, 869, 874, 932,
        936, 949, 950, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258, 10000, 10001, 10002, 10003, 10006, 10007,
        10008, 10029, 10081, 20866, 21866, 28591, 28592, 28595, 28597, 28599, 28605, 51932, 51949, 54936, 65001});
static_assert(std::ranges::is_sorted(knownPages));

/// ICU's name of a code page.
std::string converterName(int number)
{
    switch (number) {
    case 10001: // Macintosh pages for East Asia differ from those of Windows only in rare characters.
        return "windows-932";
    case 10002:
        return "windows-950";
    case 10003:
        return "windows-949";
    case 10008:
        return "windows-936";
    case 28591:
        return "ISO-8859-1";
    case 51932:
        return "EUC-JP";
    default:
        return (number < 870 ? "ibm-" : "windows-") + std::to_string(number);
    }
}

// ICU maps bytes that a page doesn't define to control characters, or to the end of the private use area, after the
// characters that users define.
constexpr bool isUndefined(char16_t unit)
{
    return (unit >= 0x7F && unit < 0xA0) || (unit >= 0xF8A0 && unit < 0xF8FF);
}

void replaceInvalid(const void *, UConverterToUnicodeArgs *arguments, const char *, qint32,
    UConverterCallbackReason reason, UErrorCode *status)
{
    if (reason > UCNV_IRREGULAR)
        return; // the converter is only being reset or closed
    *status = U_ZERO_ERROR;
    ucnv_cbToUWriteUChars(arguments, &replacement, 1, 0, status);
}

struct ConverterCloser {
    void operator()(UConverter *converter) const noexcept { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

Converter openConverter(int number)
{
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(converterName(number).c_str(), &status));
    if (converter)
        ucnv_setToUCallBack(converter.get(), replaceInvalid, nullptr, nullptr, nullptr, &status);
    return U_SUCCESS(status) ? std::move(converter) : nullptr;
}

// In every known page the bytes below 0x7F are ASCII, but some converters map its control characters differently.
CharacterTable characterTable(UConverter *converter)
{
    CharacterTable table;
    table.fill(replacement);
    for (std::size_t byte = 0; byte < 0x7F; ++byte)
        table[byte] = char16_t(byte);
    for (std::size_t byte = 0x80; converter && byte < table.size(); ++byte) {
        const char source = char(byte);
        const char *next = &source;
        UErrorCode status = U_ZERO_ERROR;
        const UChar32 character = ucnv_getNextUChar(converter, &next, &source + 1, &status);
        if (U_SUCCESS(status) && character <= 0xFFFF && !isUndefined(char16_t(character)))
            table[byte] = char16_t(character);
    }
    return table;
}

class SingleBytePage final : public RtfCodePage {
public:
    explicit SingleBytePage(const CharacterTable &table) : m_table(table) { }

    void decode(QByteArrayView bytes, QString &text) override
    {
        const qsizetype start = text.size();
        text.resize(start + bytes.size());
        std::ranges::transform(bytes, text.data() + start, [this](char byte) { return m_table[uchar(byte)]; });
    }
    void finish(QString &) override { }

private:
    CharacterTable m_table;
};

// Collects bytes and converts many at a time: each byte of a character may be a token of its own, and a call of the
// converter is expensive.
class MultiBytePage final : public RtfCodePage {
public:
    explicit MultiBytePage(Converter converter) : m_converter(std::move(converter)) { }

    void decode(QByteArrayView bytes, QString &text) override
    {
        while (!bytes.isEmpty()) {
            if (m_count == m_buffer.size())
                convertBuffer(false, text);
            const std::size_t count = std::min(m_buffer.size() - m_count, std::size_t(bytes.size()));
            std::memcpy(m_buffer.data() + m_count, bytes.data(), count);
            m_count += count;
            bytes = bytes.sliced(qsizetype(count));
        }
    }
    void finish(QString &text) override { convertBuffer(true, text); }

private:
    void convertBuffer(bool isLast, QString &text)
    {
        const char *source = m_buffer.data();
        UErrorCode status = U_ZERO_ERROR;
        do {
            status = U_ZERO_ERROR;
            std::array<char16_t, 4096> units;
            char16_t *target = units.data();
            ucnv_toUnicode(m_converter.get(), &target, units.data() + units.size(), &source, m_buffer.data() + m_count,
                nullptr, UBool(isLast), &status);
            std::replace_if(units.data(), target, isUndefined, replacement);
            text.append(QStringView(units.data(), target));
        } while (status == U_BUFFER_OVERFLOW_ERROR);
        m_count = 0;
    }

    Converter m_converter;
    std::array<char, 4096> m_buffer{};
    std::size_t m_count = 0;
};

constexpr CharacterTable blankTable()
{
    CharacterTable table{};
    table.fill(QChar::ReplacementCharacter);
    table['\t'] = u'\t';
    table[0x20] = u' ';
    return table;
}

// The characters of the font "Symbol" for the bytes 0x20 to 0x7E ...
constexpr std::u16string_view lowerSymbols = u" !\u2200#\u2203%&\u220B()\u2217+,\u2212./0123456789:;<=>?"
                                             u"\u2245ΑΒΧΔΕΦΓΗΙ\u03D1ΚΛΜΝΟΠΘΡΣΤΥ\u03C2ΩΞΨΖ[\u2234]\u22A5_"
                                             u"\u203Eαβχδεφγηι\u03D5κλμνοπθρστυ\u03D6ωξψζ{|}\u223C";

// ... and for the bytes 0xA0 to 0xFE
constexpr std::u16string_view upperSymbols =
    u"\u20AC\u03D2\u2032\u2264\u2044\u221E\u0192\u2663\u2666\u2665\u2660\u2194\u2190\u2191\u2192\u2193"
    u"\u00B0\u00B1\u2033\u2265\u00D7\u221D\u2202\u2022\u00F7\u2260\u2261\u2248\u2026\u23D0\u23AF\u21B5"
    u"\u2135\u2111\u211C\u2118\u2297\u2295\u2205\u2229\u222A\u2283\u2287\u2284\u2282\u2286\u2208\u2209"
    u"\u2220\u2207\u00AE\u00A9\u2122\u220F\u221A\u22C5\u00AC\u2227\u2228\u21D4\u21D0\u21D1\u21D2\u21D3"
    u"\u25CA\u27E8\u00AE\u00A9\u2122\u2211\u239B\u239C\u239D\u23A1\u23A2\u23A3\u23A7\u23A8\u23A9\u23AA"
    u"\uFFFD\u27E9\u222B\u2320\u23AE\u2321\u239E\u239F\u23A0\u23A4\u23A5\u23A6\u23AB\u23AC\u23AD";

static_assert(lowerSymbols.size() == 0x7F - 0x20 && upperSymbols.size() == 0xFF - 0xA0);

// The characters of "Wingdings" that lists and automatic corrections use; most others aren't in Unicode.
constexpr auto dingbats = std::to_array<std::pair<int, char16_t>>({{0x4A, u'☺'}, {0x4C, u'☹'}, {0x6C, u'●'},
    {0x6E, u'■'}, {0x6F, u'□'}, {0x71, u'❑'}, {0x72, u'❒'}, {0x75, u'◆'}, {0x76, u'❖'}, {0x9F, u'•'}, {0xA0, u'\u00A0'},
    {0xA7, u'▪'}, {0xA8, u'◻'}, {0xD8, u'➢'}, {0xDF, u'←'}, {0xE0, u'→'}, {0xE1, u'↑'}, {0xE2, u'↓'}, {0xE8, u'➔'},
    {0xF0, u'⇨'}, {0xFB, u'✘'}, {0xFC, u'✔'}, {0xFD, u'☒'}, {0xFE, u'☑'}});

CharacterTable symbolCharacters()
{
    CharacterTable table = blankTable();
    std::ranges::copy(lowerSymbols, table.begin() + 0x20);
    std::ranges::copy(upperSymbols, table.begin() + 0xA0);
    return table;
}

CharacterTable dingbatCharacters()
{
    CharacterTable table = blankTable();
    for (const auto &[byte, character] : dingbats)
        table[std::size_t(byte)] = character;
    return table;
}

std::unique_ptr<RtfCodePage> openPage(int number)
{
    if (number == RtfCodePages::symbolFont)
        return std::make_unique<SingleBytePage>(symbolCharacters());
    if (number == RtfCodePages::dingbatFont)
        return std::make_unique<SingleBytePage>(dingbatCharacters());
    Converter converter = openConverter(number);
    if (converter && ucnv_getMaxCharSize(converter.get()) > 1)
        return std::make_unique<MultiBytePage>(std::move(converter));
    return std::make_unique<SingleBytePage>(characterTable(converter.get()));
}

} // namespace

bool RtfCodePages::knows(int number)
{
    return std::ranges::binary_search(knownPages, number);
}

RtfCodePage &RtfCodePages::page(int number)
{
    if (number != m_lastNumber) {
        std::unique_ptr<RtfCodePage> &page = m_pages[number];
        if (!page)
            page = openPage(number);
        m_lastPage = page.get();
        m_lastNumber = number;
    }
    return *m_lastPage;
}
