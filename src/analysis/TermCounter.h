#pragma once

#include "analysis/PackedTermTable.h"
#include "analysis/TermTable.h"
#include "analysis/WordFrequency.h"
#include "records/TextRange.h"

#include <QLatin1StringView>
#include <QList>
#include <QStringView>

#include <span>
#include <variant>
#include <vector>

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

/// Keeps the top terms without sorting all: higher counts first, equal ones in the order of their code points.
class TermRanking {
public:
    using Term = std::variant<QLatin1StringView, QStringView>;

    /// A negative limit means 0.
    explicit TermRanking(qsizetype limit);

    /// Whether a term of that count might be kept: a quick check that rules out most terms.
    [[nodiscard]] bool mayKeep(qint64 count) const
    {
        return m_kept.size() < m_limit || (m_limit > 0 && count >= m_kept.front().count);
    }
    /// What `term` refers to must outlive the ranking.
    void add(const Term &term, qint64 count);

    [[nodiscard]] QList<WordFrequency::Item> items() const;

private:
    struct Candidate {
        Term term;
        qint64 count;
    };
    [[nodiscard]] static bool precedes(const Candidate &a, const Candidate &b);

    std::size_t m_limit;
    std::vector<Candidate> m_kept; ///< a heap with the lowest-ranking term on top
};
