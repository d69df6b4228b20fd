#include "workspace/picker/PickerModel.h"

#include "records/CharacterTable.h"
#include "records/TextTrimming.h"

#include <algorithm>

using namespace Qt::StringLiterals;

std::optional<Code> PickerModel::codeAt(int row) const
{
    const int position = row - createRows();
    return position >= 0 && position < m_filtered.size() ? std::optional(m_filtered.at(position)) : std::nullopt;
}

void PickerModel::show(const QString &query, const QList<Code> &codes, const QHash<QUuid, qint64> &counts)
{
    beginResetModel();
    const QString name = TextTrimming::trimmed(query).toString();
    const QString lowered = CharacterTable::lowered(name);
    bool isTaken = name.isEmpty();
    m_filtered.clear();
    for (const Code &code : codes) {
        const QString loweredName = CharacterTable::lowered(code.name);
        isTaken = isTaken || loweredName == lowered;
        if (loweredName.contains(lowered))
            m_filtered.append(code);
    }
    m_creatableName = isTaken ? std::nullopt : std::optional(name);
    m_counts = counts;
    endResetModel();
}

int PickerModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_filtered.size()) + createRows();
}

QVariant PickerModel::data(const QModelIndex &index, int role) const
{
    const std::optional<Code> code = codeAt(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return code ? code->name : u"Create “"_s + m_creatableName.value_or(QString()) + u"”"_s;
    case Qt::AccessibleTextRole:
        return code ? u"%1, %2 coded passages"_s.arg(code->name, QString::number(m_counts.value(code->id)))
                    : data(index, Qt::DisplayRole);
    case countRole:
        return code ? QVariant(m_counts.value(code->id)) : QVariant();
    case colorRole:
        return code ? QVariant(code->colorHex) : QVariant();
    case createsRole:
        return !code;
    case returnRole: // the row that Return takes
        return index.row() == 0;
    default:
        return {};
    }
}
