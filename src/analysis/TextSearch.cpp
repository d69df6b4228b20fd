#include "analysis/TextSearch.h"

#include "records/CharacterTable.h"

#include <algorithm>
#include <bit>

namespace {

/// The units with one lower case, ready to be compared with blocks of units.
template <typename Block>
class CaseBlocks {
public:
    explicit CaseBlocks(const std::array<char16_t, 3> &cases)
        : m_cases{Block::filledWith(cases[0]), Block::filledWith(cases[1]), Block::filledWith(cases[2])}
    {
    }
    [[nodiscard]] Block matches(const char16_t *units) const
    {
        const Block block = Block::at(units);
        return block.equalTo(m_cases[0]) | block.equalTo(m_cases[1]) | block.equalTo(m_cases[2]);
    }

private:
    std::array<Block, 3> m_cases;
};

bool lowersBeyondOneUnit(QStringView text, qsizetype position)
{
    const QChar unit = text[position];
    if (!unit.isSurrogate())
        return CharacterTable::shared()[unit.unicode()].has(CharacterTable::lowersApart);
    return unit.isHighSurrogate() && position + 1 < text.size() && text[position + 1].isLowSurrogate()
        && CharacterTable::changesInLowerCase(QChar::surrogateToUcs4(unit, text[position + 1]));
}

} // namespace

TextSearch::TextSearch(QStringView needle) : m_needle(CharacterTable::lowered(needle)), m_borders(bordersOf(m_needle))
{
    if (m_needle.isEmpty())
        return;
    m_firstCases = casesOf(m_needle.front().unicode());
    m_lastCases = casesOf(m_needle.back().unicode());
}

TextSearch::Cases TextSearch::casesOf(char16_t lower)
{
    const CharacterTable &table = CharacterTable::shared();
    Cases cases;
    cases.fill(lower);
    std::size_t found = 0;
    for (char32_t unit = 0; unit <= 0xFFFF && found < cases.size(); ++unit) {
        if (table[char16_t(unit)].lower == lower)
            cases[found++] = char16_t(unit);
    }
    return cases;
}

std::vector<qsizetype> TextSearch::bordersOf(QStringView needle)
{
    std::vector<qsizetype> borders(std::size_t(needle.size()), 0);
    qsizetype border = 0;
    for (qsizetype index = 1; index < needle.size(); ++index) {
        while (border > 0 && needle[index] != needle[border])
            border = borders[std::size_t(border - 1)];
        if (needle[index] == needle[border])
            ++border;
        borders[std::size_t(index)] = border;
    }
    return borders;
}

template <typename Block>
bool TextSearch::needsLowering(QStringView text)
{
    constexpr char16_t capitalIWithDot = 0x130;
    const Block dotted = Block::filledWith(capitalIWithDot);
    qsizetype position = 0;
    for (; text.size() - position >= Block::size; position += Block::size) {
        const Block block = Block::at(text.utf16() + position);
        quint32 suspects = (block.within(0xD800, 0xDFFF) | block.equalTo(dotted)).bits();
        for (; suspects != 0; suspects &= suspects - 1) {
            if (lowersBeyondOneUnit(text, position + std::countr_zero(suspects)))
                return true;
        }
    }
    for (; position < text.size(); ++position) {
        if (lowersBeyondOneUnit(text, position))
            return true;
    }
    return false;
}

bool TextSearch::isIn(QStringView text) const
{
    if (!m_needle.isEmpty() && needsLowering(text))
        return isInLowered(text);
    return firstIn(text, 0) >= 0;
}

// Lowering goes code point by code point, so pieces can be lowered one by one. Each piece is searched together with the
// end of the one before, where a match may begin; as long as pieces are no shorter than the needle, no unit is searched
// more than twice. firstIn() lowers what is lowered already, which changes nothing.
bool TextSearch::isInLowered(QStringView text, qsizetype pieceLength) const
{
    const auto length = std::max<qsizetype>({pieceLength, m_needle.size(), 1});
    QString lowered;
    do {
        qsizetype end = std::min(length, text.size());
        if (end > 0 && end < text.size() && text[end - 1].isHighSurrogate() && text[end].isLowSurrogate())
            ++end;
        lowered = lowered.last(std::clamp<qsizetype>(m_needle.size() - 1, 0, lowered.size()))
            + CharacterTable::lowered(text.first(end));
        if (firstIn(lowered, 0) >= 0)
            return true;
        text = text.sliced(end);
    } while (!text.isEmpty());
    return false;
}

template <typename Block>
qsizetype TextSearch::firstIn(QStringView text, qsizetype from) const
{
    qsizetype position = std::max<qsizetype>(from, 0);
    if (m_needle.isEmpty() || position > text.size())
        return position <= text.size() ? position : -1;
    const CaseBlocks<Block> first(m_firstCases);
    const CaseBlocks<Block> last(m_lastCases);
    const qsizetype lastOffset = m_needle.size() - 1;
    // Failed comparisons use up patience, and walking on restores it. When it runs out, a linear search takes over: in
    // a text of one letter, each unit could cost a comparison as long as the needle.
    qsizetype patience = 4096;
    for (; text.size() - lastOffset - position >= Block::size; position += Block::size) {
        const char16_t *units = text.utf16() + position;
        quint32 candidates = (first.matches(units) & last.matches(units + lastOffset)).bits();
        for (; candidates != 0; candidates &= candidates - 1) {
            const int offset = std::countr_zero(candidates);
            const qsizetype matching = matchingUnits(units + offset);
            if (matching == m_needle.size())
                return position + offset;
            patience -= matching;
        }
        patience += 4 * Block::size;
        if (patience < 0)
            break;
    }
    return firstByBorders(text, position);
}

qsizetype TextSearch::matchingUnits(const char16_t *units) const
{
    const CharacterTable &table = CharacterTable::shared();
    const auto differs = [&](QChar needleUnit) { return table[*units++].lower != needleUnit.unicode(); };
    return std::ranges::find_if(m_needle, differs) - m_needle.begin();
}

// Looks at each unit once (the method of Knuth, Morris and Pratt).
qsizetype TextSearch::firstByBorders(QStringView text, qsizetype from) const
{
    const CharacterTable &table = CharacterTable::shared();
    qsizetype matched = 0;
    for (qsizetype position = from; position < text.size(); ++position) {
        const char16_t unit = table[text[position].unicode()].lower;
        while (matched > 0 && m_needle[matched] != QChar(unit))
            matched = m_borders[std::size_t(matched - 1)];
        if (m_needle[matched] == QChar(unit))
            ++matched;
        if (matched == m_needle.size())
            return position + 1 - matched;
    }
    return -1;
}

template bool TextSearch::needsLowering<PlainUnitBlock>(QStringView);
template qsizetype TextSearch::firstIn<PlainUnitBlock>(QStringView, qsizetype) const;
#if defined(__SSE2__)
template bool TextSearch::needsLowering<Sse2UnitBlock>(QStringView);
template qsizetype TextSearch::firstIn<Sse2UnitBlock>(QStringView, qsizetype) const;
#endif
