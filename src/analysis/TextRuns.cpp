#include "analysis/TextRuns.h"

#include "analysis/SaturatingArithmetic.h"

PassageCursor::PassageCursor(qsizetype textLength) : m_covered{{0, textLength}}
{
}

PassageCursor::PassageCursor(std::span<const TextRange> passages, qsizetype textLength)
{
    m_covered.reserve(passages.size());
    for (const TextRange &passage : passages) {
        const qint64 start = std::max<qint64>(passage.location, 0);
        const qint64 end = std::min<qint64>(saturatingAdd(passage.location, passage.length), textLength);
        if (start < end)
            m_covered.push_back({start, end});
    }
    m_covered = united<&Stretch::start, &Stretch::end>(std::move(m_covered));
}

bool PassageCursor::operator()(qsizetype start, qsizetype end)
{
    while (m_next < m_covered.size() && m_covered[m_next].end <= start)
        ++m_next;
    return m_next < m_covered.size() && m_covered[m_next].start < end;
}
