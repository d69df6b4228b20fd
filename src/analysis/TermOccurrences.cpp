#include "analysis/TermOccurrences.h"

#include "analysis/PassageCursor.h"
#include "analysis/TextRuns.h"
#include "analysis/WordFrequency.h"
#include "records/CharacterTable.h"
#include "records/TextStats.h"

#include <algorithm>

namespace {

bool beginsWithIdeograph(QStringView term)
{
    const bool isPair = term.size() > 1 && term[0].isHighSurrogate() && term[1].isLowSurrogate();
    const char32_t first = isPair ? QChar::surrogateToUcs4(term[0], term[1]) : term[0].unicode();
    return CharacterTable::wordTrait(first) == CharacterTable::ideograph;
}

/// Compares stretches of a text, whose traits are known, with one term.
class TermComparison {
public:
    explicit TermComparison(QStringView composedTerm) : m_term(composedTerm) { }

    [[nodiscard]] bool operator()(QStringView stretch, quint16 traits) const
    {
        if ((traits & CharacterTable::complex) != 0)
            return CharacterTable::composed(CharacterTable::lowered(stretch)) == m_term;
        return std::ranges::equal(stretch, m_term,
            [this](QChar unit, QChar termUnit) { return m_table[unit.unicode()].lower == termUnit.unicode(); });
    }

private:
    const CharacterTable &m_table = CharacterTable::shared();
    QStringView m_term;
};

/// Collects what of one walk over a text is asked for.
class Collector {
public:
    Collector(QStringView text, QStringView composedTerm, const std::optional<std::vector<TextRange>> &passages)
        : m_text(text),
          m_isTerm(composedTerm),
          m_isInPassage(passages ? PassageCursor(*passages, text.size()) : PassageCursor(text.size()))
    {
    }

    void take(const TextRuns::Run &token)
    {
        if (m_isTerm(m_text.sliced(token.start, token.length()), token.traits) && m_isInPassage(token.start, token.end))
            m_found.push_back({token.start, token.length()});
    }
    [[nodiscard]] std::vector<TextRange> found() && { return std::move(m_found); }

private:
    QStringView m_text;
    TermComparison m_isTerm;
    PassageCursor m_isInPassage;
    std::vector<TextRange> m_found;
};

} // namespace

// A term is found either among the words or among the ideographs: composing makes no ideograph of anything else.
std::vector<TextRange> TermOccurrences::occurrences(QStringView text, QStringView term, qsizetype minLength,
    bool ignoreStopwords, const std::optional<std::vector<TextRange>> &passages)
{
    const QString composed = CharacterTable::composed(term);
    if (composed.isEmpty())
        return {};
    Collector collector(text, composed, passages);
    const auto take = [&](const TextRuns::Run &token) { collector.take(token); };
    if (beginsWithIdeograph(composed)) {
        TextRuns::forEach(text, CharacterTable::ideograph,
            [&](const TextRuns::Run &run) { TextRuns::forEachIdeographicTerm(run, text, take); });
        return std::move(collector).found();
    }
    const bool isIgnored = ignoreStopwords && WordFrequency::stopwords().contains(composed);
    if (!isIgnored && TextStats::characterCount(composed) >= minLength)
        TextRuns::forEach(text, CharacterTable::word, take);
    return std::move(collector).found();
}
