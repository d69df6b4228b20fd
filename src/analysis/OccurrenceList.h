#pragma once

#include "analysis/WordFrequency.h"

#include <QList>

#include <span>

/// The places where a term stands, in order. A common word stands in millions of places: each is kept as two numbers
/// beside its document's text, which is shared, and is made into an `Occurrence` when it's asked for. Copies are cheap.
class OccurrenceList {
public:
    /// Adds the places in one more document. `ranges` must lie in `text`.
    void add(const QUuid &documentID, const QString &title, const QString &text, std::span<const TextRange> ranges);

    [[nodiscard]] qsizetype size() const { return m_places.size(); }
    [[nodiscard]] bool isEmpty() const { return m_places.isEmpty(); }
    /// `index` must be one of the list. Gives the same each time, identity included. O(log n) of the documents.
    [[nodiscard]] WordFrequency::Occurrence at(qsizetype index) const;
    [[nodiscard]] WordFrequency::Occurrence first() const { return at(0); }

    /// Whether both are the same listing, or empty: no two listings share an identity. O(1).
    bool operator==(const OccurrenceList &other) const
    {
        return m_listID == other.m_listID && m_places.size() == other.m_places.size();
    }

private:
    struct Source {
        QUuid documentID;
        QString title;
        QString text;
        qsizetype end; ///< behind its last place
    };
    /// Of a text that a database can hold, which has less than 2^31 units.
    struct Place {
        quint32 start;
        quint32 length;
    };

    QUuid m_listID; ///< null until there is a place
    QList<Source> m_sources;
    QList<Place> m_places;
};
