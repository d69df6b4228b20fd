#pragma once

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
