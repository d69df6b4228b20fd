#include "records/TextStats.h"

#include "records/CharacterTable.h"

#include <unicode/ubrk.h>

#include <algorithm>
#include <bit>
#include <limits>
#include <memory>

namespace {

class WordCounter {
public:
    explicit WordCounter(QStringView text) : m_text(text) { }

    template <typename Block>
    qint64 count()
    {
        while (m_text.size() - m_position >= Block::size) {
            const Block block = Block::at(m_text.utf16() + m_position);
            if (block.within(0, 0x7F).bits() == 0xFFFF)
                takeASCII(block);
            else
                takeUnits(m_position + Block::size);
        }
        takeUnits(m_text.size());
        return m_count;
    }

private:
    template <typename Block>
    void takeASCII(const Block &block)
    {
        const Block isLetter = (block | Block::filledWith(0x20)).within(u'a', u'z');
        const quint32 wordUnits = (isLetter | block.within(u'0', u'9')).bits();
        const quint32 wordStarts = wordUnits & ~(wordUnits << 1 | quint32(m_inWord));
        m_count += std::popcount(wordStarts);
        m_inWord = (wordUnits >> (Block::size - 1)) != 0;
        m_position += Block::size;
    }

    // May go one unit beyond `end`, to the end of a surrogate pair.
    void takeUnits(qsizetype end)
    {
        while (m_position < end) {
            const quint16 traits = nextTraits();
            const bool isWord = (traits & CharacterTable::word) != 0;
            m_count += (traits & CharacterTable::ideograph) != 0 || (isWord && !m_inWord);
            m_inWord = isWord;
        }
    }

    [[nodiscard]] quint16 nextTraits()
    {
        const QChar unit = m_text[m_position++];
        const quint16 traits = m_table[unit.unicode()].traits;
        if ((traits & CharacterTable::surrogate) == 0)
            return traits;
        if (!unit.isHighSurrogate() || m_position == m_text.size() || !m_text[m_position].isLowSurrogate())
            return 0;
        return CharacterTable::wordTrait(QChar::surrogateToUcs4(unit, m_text[m_position++]));
    }

    const CharacterTable &m_table = CharacterTable::shared();
    QStringView m_text;
    qsizetype m_position = 0;
    qint64 m_count = 0;
    bool m_inWord = false;
};

struct IteratorCloser {
    void operator()(UBreakIterator *iterator) const noexcept { ubrk_close(iterator); }
};

// Opening an iterator costs far more than using it, so each thread keeps one.
UBreakIterator *characterIterator(QStringView text)
{
    UErrorCode status = U_ZERO_ERROR;
    constexpr auto rootLocale = "";
    thread_local const std::unique_ptr<UBreakIterator, IteratorCloser> iterator(
        ubrk_open(UBRK_CHARACTER, rootLocale, nullptr, 0, &status));
    ubrk_setText(iterator.get(), text.utf16(), int32_t(text.size()), &status);
    if (U_FAILURE(status))
        qFatal("ICU has no rules for characters: %s", u_errorName(status));
    return iterator.get();
}

// ICU counts in 32 bits.
constexpr qsizetype maxPiece = std::numeric_limits<int32_t>::max();

qint64 clustersByRule(QStringView text)
{
    qint64 count = 0;
    for (; !text.isEmpty(); text = text.sliced(std::min(text.size(), maxPiece))) {
        UBreakIterator *iterator = characterIterator(text.first(std::min(text.size(), maxPiece)));
        while (ubrk_next(iterator) != UBRK_DONE)
            ++count;
    }
    return count;
}

/// Counts units that can't join a neighbour as clusters by themselves, and lets ICU count the stretches in between.
class CharacterCounter {
public:
    explicit CharacterCounter(QStringView text) : m_text(text) { }

    template <typename Block>
    qint64 count()
    {
        while (m_position < m_text.size()) {
            const qsizetype start = m_position;
            skipLoners<Block>();
            m_count += m_position - start;
            if (m_position == m_text.size())
                break;
            if (m_text[m_position] == u'\r')
                takeLineEnd();
            else
                takeStretch(start);
        }
        return m_count;
    }

private:
    [[nodiscard]] bool joins(qsizetype position) const
    {
        return m_table[m_text[position].unicode()].has(CharacterTable::joins);
    }

    // Loners are units that don't join. A cluster always ends between two of them, except between CR and LF.
    template <typename Block>
    void skipLoners()
    {
        const auto isLoner = [&] { return !joins(m_position) && m_text[m_position] != u'\r'; };
        while (m_text.size() - m_position >= Block::size) {
            const Block block = Block::at(m_text.utf16() + m_position);
            const Block isPlain = block.within(0, u'\r' - 1) | block.within(u'\r' + 1, lastBeforeMarks);
            if (isPlain.bits() == 0xFFFF) {
                m_position += Block::size;
                continue;
            }
            for (const qsizetype end = m_position + Block::size; m_position < end; ++m_position) {
                if (!isLoner())
                    return;
            }
        }
        while (m_position < m_text.size() && isLoner())
            ++m_position;
    }

    void takeLineEnd()
    {
        ++m_position;
        if (m_position < m_text.size() && m_text[m_position] == u'\n')
            ++m_position;
        ++m_count;
    }

    // The loners on both sides of a joining unit may belong to its cluster, unless they are CR. Each call of ICU costs
    // as much as counting some dozen units, so stretches near each other are counted together.
    void takeStretch(qsizetype lonersStart)
    {
        const bool hasLonerBefore = m_position > lonersStart;
        const qsizetype start = hasLonerBefore ? m_position - 1 : m_position;
        qsizetype end = m_position + 1;
        for (qsizetype next = end; next < m_text.size() && next - end < nearUnits; ++next) {
            if (joins(next))
                end = next + 1;
        }
        if (end < m_text.size() && m_text[end] != u'\r')
            ++end;
        m_count += clustersByRule(m_text.sliced(start, end - start)) - qint64(hasLonerBefore);
        m_position = end;
    }

    static constexpr qsizetype nearUnits = 32;
    static constexpr char16_t lastBeforeMarks = 0x2FF;

    const CharacterTable &m_table = CharacterTable::shared();
    QStringView m_text;
    qsizetype m_position = 0;
    qint64 m_count = 0;
};

} // namespace

template <typename Block>
qint64 TextStats::wordCount(QStringView text)
{
    return WordCounter(text).count<Block>();
}

template <typename Block>
qint64 TextStats::characterCount(QStringView text)
{
    return CharacterCounter(text).count<Block>();
}

QStringView TextStats::leadingCharacters(QStringView text, qint64 count)
{
    UBreakIterator *iterator = characterIterator(text.first(std::min(text.size(), maxPiece)));
    int32_t end = 0;
    for (qint64 taken = 0; taken < count; ++taken) {
        const int32_t next = ubrk_next(iterator);
        if (next == UBRK_DONE)
            return text;
        end = next;
    }
    return text.first(end);
}

template qint64 TextStats::wordCount<PlainUnitBlock>(QStringView);
template qint64 TextStats::characterCount<PlainUnitBlock>(QStringView);
#if defined(__SSE2__)
template qint64 TextStats::wordCount<Sse2UnitBlock>(QStringView);
template qint64 TextStats::characterCount<Sse2UnitBlock>(QStringView);
#endif
