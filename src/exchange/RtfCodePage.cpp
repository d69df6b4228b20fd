#include "exchange/RtfCodePage.h"

#include "exchange/RtfSymbolFont.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

namespace {

struct Encoding {
    int number;
    const char *name; // as ICU calls it
};

// Sorted by number. Where Macintosh pages for East Asia differ from those of Windows, they do so in rare signs.
constexpr auto encodings = std::to_array<Encoding>({
    {437, "ibm-437"},
    {720, "ibm-720"},
    {737, "ibm-737"},
    {775, "ibm-775"},
    {819, "ISO-8859-1"},
    {850, "ibm-850"},
    {852, "ibm-852"},
    {855, "ibm-855"},
    {857, "ibm-857"},
    {858, "ibm-858"},
    {860, "ibm-860"},
    {861, "ibm-861"},
    {862, "ibm-862"},
    {863, "ibm-863"},
    {864, "ibm-864"},
    {865, "ibm-865"},
    {866, "ibm-866"},
    {869, "ibm-869"},
    {874, "windows-874-2000"},
    {932, "ibm-943_P15A-2003"},
    {936, "windows-936-2000"},
    {949, "windows-949-2000"},
    {950, "windows-950-2000"},
    {1250, "windows-1250"},
    {1251, "windows-1251"},
    {1252, "windows-1252"},
    {1253, "windows-1253"},
    {1254, "windows-1254"},
    {1255, "windows-1255"},
    {1256, "windows-1256"},
    {1257, "windows-1257"},
    {1258, "windows-1258"},
    {10000, "macintosh"},
    {10001, "ibm-943_P15A-2003"},
    {10002, "windows-950-2000"},
    {10003, "windows-949-2000"},
    {10006, "x-MacGreek"},
    {10007, "x-MacCyrillic"},
    {10008, "windows-936-2000"},
    {10029, "x-MacCentralEurope"},
    {10081, "x-MacTurkish"},
    {20866, "KOI8-R"},
    {21866, "KOI8-U"},
    {28591, "ISO-8859-1"},
    {28592, "ISO-8859-2"},
    {28595, "ISO-8859-5"},
    {28597, "ISO-8859-7"},
    {28599, "ISO-8859-9"},
    {28605, "ISO-8859-15"},
    {51932, "EUC-JP"},
    {51949, "EUC-KR"},
    {54936, "GB18030"},
    {65001, "UTF-8"},
});
static_assert(std::ranges::is_sorted(encodings, {}, &Encoding::number));

const char *encodingName(int number)
{
    const auto *place = std::ranges::lower_bound(encodings, number, {}, &Encoding::number);
    return place != encodings.end() && place->number == number ? place->name : nullptr;
}

constexpr char16_t replacement = QChar::ReplacementCharacter;

// Converters pass bytes that a page leaves open on as control characters, or put them at the end of the private use
// area, behind the characters that users define.
constexpr bool isNoCharacter(char16_t unit)
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
    Converter converter(ucnv_open(encodingName(number), &status));
    if (converter)
        ucnv_setToUCallBack(converter.get(), replaceInvalid, nullptr, nullptr, nullptr, &status);
    return U_SUCCESS(status) ? std::move(converter) : nullptr;
}

using CharacterTable = std::array<char16_t, 256>;

// In every page known the bytes below 0x7F are ASCII, though some converters shuffle its control characters.
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
        if (U_SUCCESS(status) && character <= 0xFFFF && !isNoCharacter(char16_t(character)))
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

// Collects bytes and converts them many at a time: each byte of a character may stand in a token of its own, and a
// call of the converter costs far more than a byte.
class MultiBytePage final : public RtfCodePage {
public:
    explicit MultiBytePage(Converter converter) : m_converter(std::move(converter)) { }

    void decode(QByteArrayView bytes, QString &text) override
    {
        while (!bytes.isEmpty()) {
            if (m_count == m_waiting.size())
                convertWaiting(false, text);
            const std::size_t count = std::min(m_waiting.size() - m_count, std::size_t(bytes.size()));
            std::memcpy(m_waiting.data() + m_count, bytes.data(), count);
            m_count += count;
            bytes = bytes.sliced(qsizetype(count));
        }
    }
    void finish(QString &text) override { convertWaiting(true, text); }

private:
    void convertWaiting(bool isLast, QString &text)
    {
        const char *source = m_waiting.data();
        UErrorCode status = U_ZERO_ERROR;
        do {
            status = U_ZERO_ERROR;
            std::array<char16_t, 4096> units;
            char16_t *target = units.data();
            ucnv_toUnicode(m_converter.get(), &target, units.data() + units.size(), &source, m_waiting.data() + m_count,
                nullptr, UBool(isLast), &status);
            std::replace_if(units.data(), target, isNoCharacter, replacement);
            text.append(QStringView(units.data(), target));
        } while (status == U_BUFFER_OVERFLOW_ERROR);
        m_count = 0;
    }

    Converter m_converter;
    std::array<char, 4096> m_waiting{};
    std::size_t m_count = 0;
};

std::unique_ptr<RtfCodePage> openPage(int number)
{
    if (number == RtfCodePages::symbolFont)
        return std::make_unique<SingleBytePage>(RtfSymbolFont::symbolCharacters());
    if (number == RtfCodePages::dingbatFont)
        return std::make_unique<SingleBytePage>(RtfSymbolFont::dingbatCharacters());
    Converter converter = openConverter(number);
    if (converter && ucnv_getMaxCharSize(converter.get()) > 1)
        return std::make_unique<MultiBytePage>(std::move(converter));
    return std::make_unique<SingleBytePage>(characterTable(converter.get()));
}

} // namespace

bool RtfCodePages::knows(int number)
{
    return encodingName(number) != nullptr;
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
