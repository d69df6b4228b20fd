#pragma once

#include "kit/lists/ListModel.h"

#include <QHash>
#include <QString>
#include <QUuid>

#include <optional>
#include <vector>

class LibraryStore;

/// One line of the sidebar's list.
struct SidebarRow {
    enum class Kind {
        head, ///< of a section
        project,
        newProject, ///< a button
        hint,
        code,
        newCode, ///< a button, or the field for a new code's name
    };

    Kind kind = Kind::head;
    QUuid id = {}; ///< of the project or the code; null for others
    QString text = {};
    qint64 count = 0;
    QString colorHex = {}; ///< as stored
    int depth = 0;
    bool isEdited = false; ///< an inline field replaces the texts

    /// Whether keys stop here and a click does something.
    [[nodiscard]] bool acts() const { return kind != Kind::head && kind != Kind::hint; }
    bool operator==(const SidebarRow &) const = default;
};

using SidebarRows = std::vector<SidebarRow>;

/// Which inline fields are open.
struct OpenFields {
    bool isAddingCode = false;
    std::optional<QUuid> renamingCodeID;
};

/// All rows from top to bottom. O(n log n).
[[nodiscard]] SidebarRows sidebarRows(const LibraryStore &store, const OpenFields &fields);

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
