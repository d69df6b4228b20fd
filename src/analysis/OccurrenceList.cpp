#include "analysis/OccurrenceList.h"

#include "records/UuidSource.h"

#include <algorithm>

void OccurrenceList::add(
    const QUuid &documentID, const QString &title, const QString &text, std::span<const TextRange> ranges)
{
    if (ranges.empty())
        return;
    if (isEmpty())
        m_listID = QUuid::createUuid();
    for (const TextRange &range : ranges)
        m_places.append({quint32(range.location), quint32(range.length)});
    m_sources.append({documentID, title, text, m_places.size()});
}

WordFrequency::Occurrence OccurrenceList::at(qsizetype index) const
{
    const Source &source = *std::ranges::upper_bound(m_sources, index, {}, &Source::end);
    const Place &place = m_places.at(index);
    const TextRange range{place.start, place.length};
    const TextRange context = WordFrequency::contextOf(range, source.text.size());
    return {rowIdentity(m_listID, index), source.documentID, source.title, range,
        source.text.mid(context.location, context.length)};
}
