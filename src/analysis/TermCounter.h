#pragma once

#include "analysis/PackedTermTable.h"
#include "analysis/PackedTerms.h"
#include "analysis/TermTable.h"
#include "analysis/WordFrequency.h"
#include "records/TextRange.h"

#include <QList>
#include <QStringView>

#include <span>

class PassageCursor;

/// Running totals of all terms of some texts, counted in one walk over each text without a list of tokens. Short words
/// and stop words are counted, too, and left out only of an answer: the same totals serve every minimum length.
class TermCounter {
public:
    void add(QStringView text);
    /// Counts only the tokens that share a unit with a passage, each once and whole. Passages may overlap and lie
    /// outside the text.
    void add(QStringView text, std::span<const TextRange> passages);

    /// The `limit` most frequent terms, in composed form; those of equal count in the order of their code points. A
    /// negative limit is no term. `minLength` counts grapheme clusters.
    [[nodiscard]] QList<WordFrequency::Item> top(qsizetype minLength, bool ignoreStopwords, qsizetype limit) const;

private:
    void count(QStringView text, PassageCursor isInPassage);
    void addComplexWord(QStringView units);
    void addComplexIdeographs(QStringView ideographs);

    PackedTermTable<ShortWord> m_shortWords;
    PackedTermTable<Bigram> m_bigrams; ///< ideographs of the Basic Multilingual Plane
    TermTable m_otherTerms; ///< the rest; no term is in two tables
};
