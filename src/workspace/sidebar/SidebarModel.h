#pragma once

#include "kit/lists/ListModel.h"
#include "workspace/sidebar/SidebarRow.h"

/// The lines of the sidebar as a list. A code's line can be dragged onto another one, which is only signalled.
class SidebarModel final : public ListModel<SidebarRows> {
    Q_OBJECT

public:
    explicit SidebarModel(QObject *parent = nullptr);

    /// `index` must be a valid index of a `SidebarModel`.
    [[nodiscard]] static const SidebarRow &rowAt(const QModelIndex &index);
    /// The first line of that kind and id; invalid if there is none. O(n).
    [[nodiscard]] QModelIndex find(SidebarRow::Kind kind, const QUuid &id = {}) const;

    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

    /// A dragged code travels as text: its identifier in upper case with hyphens.
    [[nodiscard]] QStringList mimeTypes() const override;
    [[nodiscard]] QMimeData *mimeData(const QModelIndexList &indexes) const override;
    [[nodiscard]] Qt::DropActions supportedDropActions() const override;
    [[nodiscard]] bool canDropMimeData(
        const QMimeData *data, Qt::DropAction action, int row, int column, const QModelIndex &parent) const override;
    bool dropMimeData(
        const QMimeData *data, Qt::DropAction action, int row, int column, const QModelIndex &parent) override;

Q_SIGNALS:
    void codeDropped(const QUuid &dropped, const QUuid &target);
};
