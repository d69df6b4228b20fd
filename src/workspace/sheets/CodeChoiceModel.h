#pragma once

#include "records/FlatCode.h"

#include <QAbstractListModel>
#include <QHash>
#include <QSet>

/// The codes to choose from, in the order of their tree, each of them chosen or not.
class CodeChoiceModel final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        depthRole = Qt::UserRole + 1, ///< qint64: see `FlatCode`
        countRole, ///< qint64: the code's passages
        colorHexRole, ///< QString, as stored
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] qsizetype chosenCount() const { return m_chosen.size(); }
    /// In the order of the tree.
    [[nodiscard]] QList<QUuid> chosenIDs() const;
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

    /// What was chosen and is still there stays chosen.
    void setCodes(const QList<FlatCode> &codes, const QHash<QUuid, qint64> &counts);
    void toggle(const QModelIndex &index);

Q_SIGNALS:
    void chosenCountChanged();

private:
    QList<FlatCode> m_codes;
    QHash<QUuid, qint64> m_counts;
    QSet<QUuid> m_chosen;
};
