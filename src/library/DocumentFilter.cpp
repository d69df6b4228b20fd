#include "library/DocumentFilter.h"

#include "analysis/TextSearch.h"
#include "records/CharacterTable.h"
#include "records/TextTrimming.h"

QList<Document> DocumentFilter::matching(const QList<Document> &documents, const QString &searchText)
{
    const QString needle = CharacterTable::lowered(TextTrimming::trimmedBlanks(searchText));
    if (needle.isEmpty())
        return documents;
    if (needle == m_needle && documents == m_searched)
        return m_found;

    const TextSearch search(needle);
    QList<Document> found;
    for (const Document &document : candidates(documents, needle)) {
        if (search.isIn(document.title) || isInText(search, document))
            found.append(document);
    }
    m_searched = documents;
    m_needle = needle;
    m_found = found;
    return found;
}

const QList<Document> &DocumentFilter::candidates(const QList<Document> &documents, const QString &needle) const
{
    const bool narrows = !m_needle.isEmpty() && needle.contains(m_needle) && documents == m_searched;
    return narrows ? m_found : documents;
}

bool DocumentFilter::isInText(const TextSearch &search, const Document &document)
{
    auto known = m_needsLowering.constFind(document.id);
    if (known == m_needsLowering.constEnd())
        known = m_needsLowering.insert(document.id, TextSearch::needsLowering(document.text));
    return *known ? search.isInLowered(document.text) : search.firstIn(document.text, 0) >= 0;
}
