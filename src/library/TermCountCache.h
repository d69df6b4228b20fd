#pragma once

#include "analysis/TermCounter.h"
#include "records/Document.h"

#include <QList>
#include <QSet>

/// The terms of all documents of a project, counted once for each document: texts never change.
class TermCountCache {
public:
    /// The totals over exactly these documents. Counts only those that are new; counts all again when one has gone.
    [[nodiscard]] const TermCounter &over(const QList<Document> &documents);

private:
    [[nodiscard]] bool hasLost(const QList<Document> &documents) const;

    QSet<QUuid> m_counted;
    TermCounter m_totals;
};
