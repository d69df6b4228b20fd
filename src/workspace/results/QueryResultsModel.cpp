#include "workspace/results/QueryResultsModel.h"

#include "kit/lists/SnippetRowDelegate.h"
#include "kit/theme/CodeColor.h"

#include <QColor>

using namespace Qt::StringLiterals;

int QueryResultsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_results.size());
}

QVariant QueryResultsModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const QueryResult &shown = result(index);
    switch (role) {
    case Qt::DisplayRole:
        return shown.snippet.beginning(SnippetRowDelegate::maxUnits);
    case Qt::AccessibleTextRole:
        return spoken(shown);
    case SnippetRowDelegate::documentTitleRole:
        return shown.documentTitle;
    case SnippetRowDelegate::dotColorsRole:
        return QVariant::fromValue(dotsOf(shown));
    default:
        return {};
    }
}

QList<QColor> QueryResultsModel::dotsOf(const QueryResult &result) const
{
    QList<QColor> colors;
    for (const QUuid &codeID : result.codeIDs.first(std::min(result.codeIDs.size(), SnippetRowDelegate::maxDots)))
        colors.append(CodeColor::orAccent(m_codes.value(codeID).colorHex));
    return colors;
}

/// The dots by their names.
QString QueryResultsModel::spoken(const QueryResult &result) const
{
    QStringList parts{result.snippet.toString(), result.documentTitle};
    for (const QUuid &codeID : result.codeIDs) {
        const auto code = m_codes.constFind(codeID);
        if (code != m_codes.constEnd())
            parts.append(code->name);
    }
    return parts.join(u", "_s);
}

bool QueryResultsModel::setResults(const QList<QueryResult> &results)
{
    if (results == m_results)
        return false;
    beginResetModel();
    m_results = results;
    endResetModel();
    return true;
}

void QueryResultsModel::setCodes(const QList<Code> &codes)
{
    m_codes.clear();
    m_codes.reserve(codes.size());
    for (const Code &code : codes)
        m_codes.insert(code.id, code);
}
