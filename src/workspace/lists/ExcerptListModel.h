#pragma once

#include "records/ExcerptHit.h"

#include <QAbstractListModel>
#include <QColor>

/// The passages of one code, in the store's order, with the roles of `SnippetRowDelegate`.
class ExcerptListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] const ExcerptHit &hit(const QModelIndex &index) const { return m_hits.at(index.row()); }
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

    /// Equal passages are no change.
    void setHits(const QList<ExcerptHit> &hits);
    /// Of the dots of all rows.
    void setColor(const QColor &color) { m_color = color; }

private:
    QList<ExcerptHit> m_hits;
    QColor m_color;
};
