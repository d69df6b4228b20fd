#include "workspace/sidebar/SidebarModel.h"

#include "kit/lists/RowLine.h"
#include "library/LibraryStore.h"

#include <QMimeData>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString spoken(const SidebarRow &row)
{
    switch (row.kind) {
    case SidebarRow::Kind::project:
        return u"%1, %2"_s.arg(row.text, RowText::counted(row.count, u"document"_s));
    case SidebarRow::Kind::code:
        return u"%1, %2"_s.arg(row.text, RowText::counted(row.count, u"coded passage"_s));
    case SidebarRow::Kind::head:
    case SidebarRow::Kind::newProject:
    case SidebarRow::Kind::hint:
    case SidebarRow::Kind::newCode:
        return row.text;
    }
    Q_UNREACHABLE();
}

QVariant describe(const SidebarRow &row, int role)
{
    if (role == Qt::DisplayRole)
        return row.text;
    return role == Qt::AccessibleTextRole ? QVariant(spoken(row)) : QVariant();
}

/// Absent for any text other than an identifier of 36 characters, in upper or lower case.
std::optional<QUuid> draggedCode(const QMimeData &data)
{
    constexpr qsizetype length = 36; // other spellings have braces around it
    const QString text = data.text();
    const QUuid id = text.size() == length ? QUuid::fromString(text) : QUuid();
    return id.isNull() ? std::nullopt : std::optional(id);
}

} // namespace

using Kind = SidebarRow::Kind;

SidebarRows sidebarRows(const LibraryStore &store, const OpenFields &fields)
{
    SidebarRows rows;
    rows.push_back({.kind = Kind::head, .text = u"Projects"_s});
    for (const Project &project : store.projects().get())
        rows.push_back({.kind = Kind::project,
            .id = project.id,
            .text = project.name,
            .count = store.projectDocCounts()->value(project.id)});
    rows.push_back({.kind = Kind::newProject, .text = u"New Project…"_s});

    rows.push_back({.kind = Kind::head, .text = u"Codes"_s});
    if (store.codes()->isEmpty() && !fields.isAddingCode)
        rows.push_back({.kind = Kind::hint, .text = u"Select text in a document to code it"_s});
    for (const FlatCode &line : store.orderedCodes())
        rows.push_back({.kind = Kind::code,
            .id = line.id(),
            .text = line.code.name,
            .count = store.codeCounts()->value(line.id()),
            .colorHex = line.code.colorHex,
            .depth = int(line.depth),
            .isEdited = line.id() == fields.renamingCodeID});
    rows.push_back({.kind = Kind::newCode, .text = u"New Code…"_s, .isEdited = fields.isAddingCode});
    return rows;
}

SidebarModel::SidebarModel(QObject *parent) : ListModel(describe, parent)
{
}

const SidebarRow &SidebarModel::rowAt(const QModelIndex &index)
{
    return static_cast<const SidebarModel *>(index.model())->m_items[size_t(index.row())];
}

QModelIndex SidebarModel::find(SidebarRow::Kind kind, const QUuid &id) const
{
    const auto found =
        std::ranges::find_if(m_items, [&](const SidebarRow &row) { return row.kind == kind && row.id == id; });
    return index(int(found - m_items.begin()));
}

Qt::ItemFlags SidebarModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    if (!rowAt(index).acts())
        return Qt::ItemNeverHasChildren;
    const Qt::ItemFlags button = Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    switch (rowAt(index).kind) {
    case SidebarRow::Kind::project:
        return button | Qt::ItemIsSelectable;
    case SidebarRow::Kind::code:
        return button | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
    default:
        return button;
    }
}

QStringList SidebarModel::mimeTypes() const
{
    return {u"text/plain"_s};
}

QMimeData *SidebarModel::mimeData(const QModelIndexList &indexes) const
{
    if (indexes.isEmpty())
        return nullptr;
    auto *data = new QMimeData;
    data->setText(rowAt(indexes.first()).id.toString(QUuid::WithoutBraces).toUpper());
    return data;
}

Qt::DropActions SidebarModel::supportedDropActions() const
{
    return Qt::CopyAction | Qt::MoveAction;
}

bool SidebarModel::canDropMimeData(const QMimeData *data, Qt::DropAction, int, int, const QModelIndex &parent) const
{
    return flags(parent).testFlag(Qt::ItemIsDropEnabled) && data != nullptr && draggedCode(*data).has_value();
}

bool SidebarModel::dropMimeData(
    const QMimeData *data, Qt::DropAction action, int row, int column, const QModelIndex &parent)
{
    if (!canDropMimeData(data, action, row, column, parent))
        return false;
    const QUuid target = rowAt(parent).id; // a copy, since the rows change meanwhile
    Q_EMIT codeDropped(*draggedCode(*data), target);
    return true;
}
