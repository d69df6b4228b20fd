#include "workspace/sidebar/SidebarModel.h"

#include "workspace/sidebar/CodeDrag.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

bool isSameLine(const SidebarRow &one, const SidebarRow &other)
{
    return one.isSameLineAs(other);
}

QString counted(const SidebarRow &row, const QString &one, const QString &many)
{
    return u"%1, %2 %3"_s.arg(row.text, QString::number(row.count), row.count == 1 ? one : many);
}

} // namespace

const SidebarRow &SidebarModel::rowAt(const QModelIndex &index)
{
    return static_cast<const SidebarModel *>(index.model())->m_rows[size_t(index.row())];
}

QModelIndex SidebarModel::find(const SidebarRow &line) const
{
    const auto found = std::ranges::find_if(m_rows, [&](const SidebarRow &each) { return each.isSameLineAs(line); });
    return found == m_rows.end() ? QModelIndex() : index(int(found - m_rows.begin()));
}

QModelIndex SidebarModel::find(SidebarRow::Kind kind, const QUuid &id) const
{
    SidebarRow line;
    line.kind = kind;
    line.id = id;
    return find(line);
}

void SidebarModel::show(SidebarRows rows)
{
    replaceLines(rows);
    const auto [firstOld, firstNew] = std::ranges::mismatch(m_rows, rows);
    if (firstOld == m_rows.end())
        return;
    const auto first = int(firstOld - m_rows.begin());
    int last = int(m_rows.size()) - 1;
    while (m_rows[size_t(last)] == rows[size_t(last)])
        --last;
    m_rows = std::move(rows);
    Q_EMIT dataChanged(index(first), index(last));
}

/// Takes out the lines between those that begin and end both lists, and puts the new ones there. Afterwards the lines
/// are those of `rows`; what is shown of them may still differ.
void SidebarModel::replaceLines(SidebarRows &rows)
{
    const auto firstNew = std::ranges::mismatch(m_rows, rows, isSameLine).in2;
    const auto first = firstNew - rows.begin();
    const auto common = std::ptrdiff_t(std::min(m_rows.size(), rows.size())) - first;
    std::ptrdiff_t after = 0;
    while (
        after < common && isSameLine(m_rows[m_rows.size() - size_t(after) - 1], rows[rows.size() - size_t(after) - 1]))
        ++after;
    const auto oldEnd = std::ssize(m_rows) - after;
    const auto newEnd = std::ssize(rows) - after;
    if (first < oldEnd) {
        beginRemoveRows({}, int(first), int(oldEnd) - 1);
        m_rows.erase(m_rows.begin() + first, m_rows.begin() + oldEnd);
        endRemoveRows();
    }
    if (first < newEnd) {
        beginInsertRows({}, int(first), int(newEnd) - 1);
        m_rows.insert(m_rows.begin() + first, rows.begin() + first, rows.begin() + newEnd);
        endInsertRows();
    }
}

int SidebarModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant SidebarModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const SidebarRow &row = rowAt(index);
    if (role == Qt::DisplayRole)
        return row.text;
    if (role != Qt::AccessibleTextRole)
        return {};
    switch (row.kind) {
    case SidebarRow::Kind::project:
        return counted(row, u"document"_s, u"documents"_s);
    case SidebarRow::Kind::code:
        return counted(row, u"coded passage"_s, u"coded passages"_s);
    case SidebarRow::Kind::head:
    case SidebarRow::Kind::newProject:
    case SidebarRow::Kind::hint:
    case SidebarRow::Kind::newCode:
        return row.text;
    }
    Q_UNREACHABLE();
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
    return {CodeDrag::mimeType()};
}

QMimeData *SidebarModel::mimeData(const QModelIndexList &indexes) const
{
    return indexes.isEmpty() ? nullptr : CodeDrag::mimeData(rowAt(indexes.first()).id);
}

Qt::DropActions SidebarModel::supportedDropActions() const
{
    return Qt::CopyAction | Qt::MoveAction;
}

bool SidebarModel::canDropMimeData(const QMimeData *data, Qt::DropAction, int, int, const QModelIndex &parent) const
{
    return flags(parent).testFlag(Qt::ItemIsDropEnabled) && data != nullptr && CodeDrag::codeID(*data).has_value();
}

bool SidebarModel::dropMimeData(
    const QMimeData *data, Qt::DropAction action, int row, int column, const QModelIndex &parent)
{
    if (!canDropMimeData(data, action, row, column, parent))
        return false;
    const QUuid target = rowAt(parent).id; // the rows change under it
    Q_EMIT codeDropped(*CodeDrag::codeID(*data), target);
    return true;
}
