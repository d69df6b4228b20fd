#pragma once

#include "analysis/OccurrenceList.h"

#include <QAbstractListModel>

/// The places where a term stands, in the store's order, with the roles of `SnippetRowDelegate`. In each context the
/// first match of the term is emphasised.
class OccurrenceListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] WordFrequency::Occurrence occurrence(const QModelIndex &index) const
    {
        return m_occurrences.at(index.row());
    }
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

    /// Returns false for the same as before, which is no change.
    bool setOccurrences(const QString &term, const OccurrenceList &occurrences);

private:
    [[nodiscard]] TextRange emphasisOf(const WordFrequency::Occurrence &occurrence) const;

    QString m_term;
    OccurrenceList m_occurrences;
};
