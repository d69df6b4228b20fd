#pragma once

#include "analysis/WordFrequency.h"

#include <QLatin1StringView>
#include <QList>
#include <QStringView>

#include <variant>
#include <vector>

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
