#include "records/CharacterTable.h"

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <limits>

namespace {

/// The lower case of one code point; no mapping is longer than three.
struct LowerCase {
    std::array<char16_t, 8> units = {};
    qsizetype length = 0;

    explicit LowerCase(QStringView character)
    {
        UErrorCode status = U_ZERO_ERROR;
        constexpr auto rootLocale = "";
        length = u_strToLower(
            units.data(), int32_t(units.size()), character.utf16(), int32_t(character.size()), rootLocale, &status);
    }
    [[nodiscard]] QStringView view() const { return {units.data(), length}; }
};

bool joinsClusters(char16_t unit)
{
    // Precomposed Hangul joins only jamo, which have the trait themselves.
    switch (u_getIntPropertyValue(unit, UCHAR_GRAPHEME_CLUSTER_BREAK)) {
    case U_GCB_OTHER:
    case U_GCB_LV:
    case U_GCB_LVT:
    case U_GCB_CONTROL:
    case U_GCB_CR:
    case U_GCB_LF:
        return false;
    default:
        return true;
    }
}

bool isStableUnderComposition(char16_t unit)
{
    return u_getIntPropertyValue(unit, UCHAR_NFC_QUICK_CHECK) == UNORM_YES && u_getCombiningClass(unit) == 0;
}

quint16 spaceTrait(char16_t unit)
{
    if (u_charType(unit) == U_SPACE_SEPARATOR || unit == u'\t')
        return CharacterTable::blank;
    const bool breaksLine = (unit >= 0x0A && unit <= 0x0D) || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
    return breaksLine ? quint16(CharacterTable::lineBreak) : quint16(0);
}

CharacterTable::Entry entryFor(char16_t unit)
{
    if (U16_IS_SURROGATE(unit))
        return {CharacterTable::surrogate | CharacterTable::lowersApart | CharacterTable::joins, unit};
    const LowerCase lowerCase(QStringView(&unit, 1));
    const bool lowersAlone = lowerCase.length == 1;
    const char16_t lower = lowersAlone ? lowerCase.units[0] : unit;
    quint16 traits = CharacterTable::wordTrait(unit) | spaceTrait(unit);
    if (traits & (CharacterTable::word | CharacterTable::ideograph)) {
        if (!lowersAlone || joinsClusters(lower) || !isStableUnderComposition(lower))
            traits |= CharacterTable::complex;
    }
    if (!lowersAlone)
        traits |= CharacterTable::lowersApart;
    if (lower > 0xFF)
        traits |= CharacterTable::wideLower;
    if (joinsClusters(unit))
        traits |= CharacterTable::joins;
    return {traits, lower};
}

} // namespace

CharacterTable::CharacterTable()
{
    for (std::size_t unit = 0; unit < m_entries.size(); ++unit)
        m_entries[unit] = entryFor(char16_t(unit));
}

const CharacterTable &CharacterTable::shared()
{
    static const CharacterTable table;
    return table;
}

quint16 CharacterTable::wordTrait(char32_t character)
{
    const auto codePoint = UChar32(character);
    if (u_hasBinaryProperty(codePoint, UCHAR_IDEOGRAPHIC))
        return ideograph;
    return (U_GET_GC_MASK(codePoint) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0 ? quint16(word) : quint16(0);
}

bool CharacterTable::changesInLowerCase(char32_t character)
{
    return u_tolower(UChar32(character)) != UChar32(character);
}

QString CharacterTable::lowered(QStringView text)
{
    const CharacterTable &table = shared();
    const auto lowersApart = [&](QChar unit) { return table[unit.unicode()].has(Trait::lowersApart); };
    QString result;
    result.reserve(text.size());
    for (const QChar *next = text.begin(); next != text.end();) {
        const QChar *runEnd = std::find_if(next, text.end(), lowersApart);
        const qsizetype written = result.size();
        result.resize(written + (runEnd - next));
        std::transform(
            next, runEnd, result.begin() + written, [&](QChar unit) { return QChar(table[unit.unicode()].lower); });
        next = runEnd;
        if (next == text.end())
            break;
        const bool isPair = next->isHighSurrogate() && next + 1 != text.end() && next[1].isLowSurrogate();
        const QChar *characterEnd = next + (isPair ? 2 : 1);
        result += LowerCase(QStringView(next, characterEnd)).view();
        next = characterEnd;
    }
    return result;
}

QString CharacterTable::composed(QStringView text)
{
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2 *normalizer = unorm2_getNFCInstance(&status);
    if (U_FAILURE(status) || text.size() > std::numeric_limits<int32_t>::max())
        return text.toString(); // ICU counts in 32 bits; SQLite stores no text that long
    QString result(text.size(), Qt::Uninitialized);
    const auto normalize = [&] {
        status = U_ZERO_ERROR;
        return unorm2_normalize(normalizer, text.utf16(), int32_t(text.size()),
            reinterpret_cast<char16_t *>(result.data()), int32_t(result.size()), &status);
    };
    int32_t length = normalize();
    if (status == U_BUFFER_OVERFLOW_ERROR) {
        result.resize(length);
        length = normalize();
    }
    result.resize(length);
    return result;
}
