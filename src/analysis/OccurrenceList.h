#pragma once

#include "analysis/WordFrequency.h"

#include <QList>

#include <span>

/// The places where a term stands, in order. A common word stands in millions of places, so each is stored as two
/// numbers and becomes an `Occurrence` only when it is asked for. Texts are shared, and copies are cheap.
class OccurrenceList {
public:
    /// Adds the places in one more document. `ranges` must lie in `text`.
    void add(const QUuid &documentID, const QString &title, const QString &text, std::span<const TextRange> ranges);

    [[nodiscard]] qsizetype size() const { return m_places.size(); }
    [[nodiscard]] bool isEmpty() const { return m_places.isEmpty(); }
    /// `index` must be one of the list. Returns the same each time, with the same id. O(log n) of the documents.
    [[nodiscard]] WordFrequency::Occurrence at(qsizetype index) const;
    [[nodiscard]] WordFrequency::Occurrence first() const { return at(0); }

    /// Whether one is a copy of the other, or both are empty: each listing has an identifier of its own. O(1).
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
    /// 32 bits suffice: a text that SQLite can store has less than 2^31 units.
    struct Place {
        quint32 start;
        quint32 length;
    };

    QUuid m_listID; ///< null until there is a place
    QList<Source> m_sources;
    QList<Place> m_places;
};
