#pragma once

#include "analysis/WordFrequency.h"

#include <QLatin1StringView>
#include <QList>
#include <QStringView>

#include <variant>
#include <vector>

/// Keeps the first terms of a list that is never made whole: higher counts first, equal ones by code points.
class TermRanking {
public:
    using Term = std::variant<QLatin1StringView, QStringView>;

    /// A negative limit is no term, as 0 is.
    explicit TermRanking(qsizetype limit);

    /// Whether a term of that count might be kept. Asked first, it spares looking at most terms.
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
    std::vector<Candidate> m_kept; ///< a heap with the last of the order on top
};
