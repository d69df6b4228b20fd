#include "workspace/results/TermListModel.h"

#include "platform/LocaleText.h"
#include "workspace/results/TermRowDelegate.h"

using namespace Qt::StringLiterals;

int TermListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_items.size());
}

QVariant TermListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const WordFrequency::Item &shown = item(index);
    switch (role) {
    case Qt::DisplayRole:
        return shown.term;
    case Qt::AccessibleTextRole:
        return shown.term + u", "_s + LocaleText::number(shown.count)
            + (shown.count == 1 ? u" occurrence"_s : u" occurrences"_s);
    case TermRowDelegate::countRole:
        return shown.count;
    case TermRowDelegate::topCountRole:
        return m_items.first().count;
    default:
        return {};
    }
}

bool TermListModel::setItems(const QList<WordFrequency::Item> &items)
{
    if (items == m_items)
        return false;
    beginResetModel();
    m_items = items;
    endResetModel();
    return true;
}
