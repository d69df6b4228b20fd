#include "analysis/TermOccurrences.h"

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

bool isTerm(QStringView token, quint16 traits, QStringView composedTerm, const CharacterTable &table)
{
    if ((traits & CharacterTable::complex) != 0)
        return CharacterTable::composed(CharacterTable::lowered(token)) == composedTerm;
    return std::ranges::equal(token, composedTerm,
        [&](QChar unit, QChar termUnit) { return table[unit.unicode()].lower == termUnit.unicode(); });
}

} // namespace

// A term is found either among the words or among the ideographs: composing makes no ideograph of anything else.
std::vector<TextRange> TermOccurrences::occurrences(QStringView text, QStringView term, qsizetype minLength,
    bool ignoreStopwords, const std::optional<std::vector<TextRange>> &passages)
{
    const QString composed = CharacterTable::composed(term);
    if (composed.isEmpty())
        return {};
    const CharacterTable &table = CharacterTable::shared();
    PassageCursor isInPassage = passages ? PassageCursor(*passages, text.size()) : PassageCursor(text.size());
    std::vector<TextRange> found;
    const auto take = [&](const TextRuns::Run &token) {
        if (isTerm(text.sliced(token.start, token.length()), token.traits, composed, table)
            && isInPassage(token.start, token.end))
            found.push_back({token.start, token.length()});
    };
    if (beginsWithIdeograph(composed)) {
        TextRuns::forEach(text, CharacterTable::ideograph,
            [&](const TextRuns::Run &run) { TextRuns::forEachIdeographicTerm(run, text, take); });
        return found;
    }
    const bool isIgnored = ignoreStopwords && WordFrequency::stopwords().contains(composed);
    if (!isIgnored && TextStats::characterCount(composed) >= minLength)
        TextRuns::forEach(text, CharacterTable::word, take);
    return found;
}
