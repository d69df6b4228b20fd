#include "library/TermCountCache.h"

#include <algorithm>

const TermCounter &TermCountCache::over(const QList<Document> &documents)
{
    if (hasLost(documents)) {
        m_counted.clear();
        m_totals.clear();
    }
    for (const Document &document : documents) {
        if (m_counted.contains(document.id))
            continue;
        m_counted.insert(document.id);
        m_totals.add(document.text);
    }
    return m_totals;
}

bool TermCountCache::hasLost(const QList<Document> &documents) const
{
    const auto isCounted = [&](const Document &document) { return m_counted.contains(document.id); };
    return std::ranges::count_if(documents, isCounted) != m_counted.size();
}
