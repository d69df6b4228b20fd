#pragma once

#include "analysis/WordFrequency.h"

#include <QAbstractListModel>
#include <QList>

/// The most frequent terms, in the store's order, with the roles of `TermRowDelegate`.
class TermListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] const WordFrequency::Item &item(const QModelIndex &index) const { return m_items.at(index.row()); }
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

    /// Returns false for the same items as before, which are no change.
    bool setItems(const QList<WordFrequency::Item> &items);

private:
    QList<WordFrequency::Item> m_items;
};
