#include "workspace/sheets/CodeChoiceModel.h"

#include "platform/LocaleText.h"

using namespace Qt::StringLiterals;

QList<QUuid> CodeChoiceModel::chosenIDs() const
{
    QList<QUuid> ids;
    for (const FlatCode &code : m_codes) {
        if (m_chosen.contains(code.id()))
            ids.append(code.id());
    }
    return ids;
}

int CodeChoiceModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_codes.size());
}

QVariant CodeChoiceModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const FlatCode &line = m_codes.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return line.code.name;
    case Qt::CheckStateRole:
        return m_chosen.contains(line.id()) ? Qt::Checked : Qt::Unchecked;
    case Qt::AccessibleTextRole:
        return u"%1, %2 coded passages"_s.arg(line.code.name, LocaleText::number(m_counts.value(line.id())));
    case depthRole:
        return line.depth;
    case countRole:
        return m_counts.value(line.id());
    case colorHexRole:
        return line.code.colorHex;
    default:
        return {};
    }
}

Qt::ItemFlags CodeChoiceModel::flags(const QModelIndex &index) const
{
    return QAbstractListModel::flags(index) | Qt::ItemIsUserCheckable;
}

void CodeChoiceModel::setCodes(const QList<FlatCode> &codes, const QHash<QUuid, qint64> &counts)
{
    beginResetModel();
    QSet<QUuid> there;
    for (const FlatCode &code : codes)
        there.insert(code.id());
    m_codes = codes;
    m_counts = counts;
    m_chosen.intersect(there);
    endResetModel();
    Q_EMIT chosenCountChanged();
}

void CodeChoiceModel::toggle(const QModelIndex &index)
{
    const QUuid id = m_codes.at(index.row()).id();
    if (!m_chosen.remove(id))
        m_chosen.insert(id);
    Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
    Q_EMIT chosenCountChanged();
}
