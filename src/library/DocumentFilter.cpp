#include "library/DocumentFilter.h"

#include "analysis/TextSearch.h"
#include "records/CharacterTable.h"
#include "records/TextTrimming.h"

#include <algorithm>
#include <numeric>

namespace {

/// Not the whole records: memos change with each letter typed, and aren't searched.
bool searchesAlike(const Document &one, const Document &other)
{
    return one.id == other.id && one.title == other.title && one.hasSameText(other);
}

} // namespace

QList<Document> DocumentFilter::matching(const QList<Document> &documents, const QString &searchText)
{
    const QString needle = CharacterTable::lowered(TextTrimming::trimmedBlanks(searchText));
    if (needle.isEmpty())
        return documents;
    if (!std::ranges::equal(documents, m_searched, searchesAlike))
        lookAtAll(documents.size());
    m_searched = documents;
    if (needle != m_needle)
        find(needle);
    QList<Document> found;
    for (const qsizetype position : m_found)
        found.append(documents.at(position));
    return found;
}

void DocumentFilter::lookAtAll(qsizetype count)
{
    m_needle.clear();
    m_found.resize(size_t(count));
    std::iota(m_found.begin(), m_found.end(), qsizetype(0));
}

void DocumentFilter::find(const QString &needle)
{
    if (!needle.contains(m_needle))
        lookAtAll(m_searched.size());
    const TextSearch search(needle);
    std::erase_if(m_found, [&](qsizetype position) {
        const Document &document = m_searched.at(position);
        return !search.isIn(document.title) && !isInText(search, document);
    });
    m_needle = needle;
}

bool DocumentFilter::isInText(const TextSearch &search, const Document &document)
{
    auto known = m_needsLowering.constFind(document.id);
    if (known == m_needsLowering.constEnd())
        known = m_needsLowering.insert(document.id, TextSearch::needsLowering(document.text));
    return *known ? search.isInLowered(document.text) : search.firstIn(document.text, 0) >= 0;
}
