#include "analysis/TermRanking.h"

#include <QAnyStringView>

#include <algorithm>

namespace {

// As UTF-16 units, surrogate pairs sort before U+E000…U+FFFF; as code points, after them.
constexpr char16_t inCodePointOrder(char16_t unit)
{
    if (unit >= 0xE000)
        return char16_t(unit - 0x800);
    return unit >= 0xD800 ? char16_t(unit + 0x2000) : unit;
}

bool precedesByCodePoints(const TermRanking::Term &a, const TermRanking::Term &b)
{
    const auto precedes = [](auto first, auto second) {
        for (qsizetype index = 0; index < std::min(first.size(), second.size()); ++index) {
            const char16_t one = inCodePointOrder(first[index].unicode());
            const char16_t other = inCodePointOrder(second[index].unicode());
            if (one != other)
                return one < other;
        }
        return first.size() < second.size();
    };
    return std::visit(precedes, a, b);
}

} // namespace

TermRanking::TermRanking(qsizetype limit) : m_limit(std::size_t(std::max<qsizetype>(limit, 0)))
{
}

bool TermRanking::precedes(const Candidate &a, const Candidate &b)
{
    return a.count != b.count ? a.count > b.count : precedesByCodePoints(a.term, b.term);
}

void TermRanking::add(const Term &term, qint64 count)
{
    const Candidate candidate{term, count};
    if (m_kept.size() == m_limit) {
        if (m_limit == 0 || !precedes(candidate, m_kept.front()))
            return;
        std::ranges::pop_heap(m_kept, precedes);
        m_kept.pop_back();
    }
    m_kept.push_back(candidate);
    std::ranges::push_heap(m_kept, precedes);
}

QList<WordFrequency::Item> TermRanking::items() const
{
    std::vector<Candidate> ordered = m_kept;
    std::ranges::sort_heap(ordered, precedes);
    QList<WordFrequency::Item> result;
    result.reserve(qsizetype(ordered.size()));
    for (const auto &[term, count] : ordered)
        result.append({std::visit([](auto view) { return QAnyStringView(view).toString(); }, term), count});
    return result;
}
