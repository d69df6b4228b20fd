#include "workspace/lists/ExcerptListModel.h"

#include "kit/lists/SnippetRowDelegate.h"

using namespace Qt::StringLiterals;

int ExcerptListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_hits.size());
}

QVariant ExcerptListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ExcerptHit &shown = hit(index);
    switch (role) {
    case Qt::DisplayRole:
        return shown.snippet.beginning(SnippetRowDelegate::maxUnits);
    case Qt::AccessibleTextRole:
        return u"%1, %2"_s.arg(shown.snippet.toString(), shown.documentTitle);
    case SnippetRowDelegate::documentTitleRole:
        return shown.documentTitle;
    case SnippetRowDelegate::dotColorsRole:
        return QVariant::fromValue(QList{m_color});
    default:
        return {};
    }
}

void ExcerptListModel::setHits(const QList<ExcerptHit> &hits)
{
    if (hits == m_hits)
        return;
    beginResetModel();
    m_hits = hits;
    endResetModel();
}
