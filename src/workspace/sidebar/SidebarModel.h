#pragma once

#include "workspace/sidebar/SidebarRow.h"

#include <QAbstractListModel>

/// The lines of the sidebar as a list. A code's line can be dragged onto another one; what that does is up to others.
class SidebarModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    /// The line that `index`, a valid index of such a model, stands for.
    [[nodiscard]] static const SidebarRow &rowAt(const QModelIndex &index);
    /// Invalid where there is no such line. O(n).
    [[nodiscard]] QModelIndex find(const SidebarRow &line) const;
    [[nodiscard]] QModelIndex find(SidebarRow::Kind kind, const QUuid &id = {}) const;

    /// Shows other rows. Lines that stay keep their indexes as far as nothing moved around them.
    void show(SidebarRows rows);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

    [[nodiscard]] QStringList mimeTypes() const override;
    [[nodiscard]] QMimeData *mimeData(const QModelIndexList &indexes) const override;
    [[nodiscard]] Qt::DropActions supportedDropActions() const override;
    [[nodiscard]] bool canDropMimeData(
        const QMimeData *data, Qt::DropAction action, int row, int column, const QModelIndex &parent) const override;
    bool dropMimeData(
        const QMimeData *data, Qt::DropAction action, int row, int column, const QModelIndex &parent) override;

Q_SIGNALS:
    void codeDropped(const QUuid &dropped, const QUuid &target);

private:
    void replaceLines(SidebarRows &rows);

    SidebarRows m_rows;
};
