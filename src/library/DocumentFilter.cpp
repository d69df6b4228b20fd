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
        const bool inTitle = TextSearch::needsLoweredCopy(document.title)
            ? search.isInLowered(CharacterTable::lowered(document.title))
            : search.isIn(document.title);
        if (inTitle || isInText(search, document))
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
    auto known = m_lowered.find(document.id);
    if (known == m_lowered.end()) {
        std::optional<QString> copy;
        if (TextSearch::needsLoweredCopy(document.text))
            copy = CharacterTable::lowered(document.text);
        known = m_lowered.insert(document.id, copy);
    }
    return known->has_value() ? search.isInLowered(**known) : search.firstIn(document.text, 0) >= 0;
}
