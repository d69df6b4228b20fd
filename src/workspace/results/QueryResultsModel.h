#pragma once

#include "analysis/QueryResult.h"
#include "records/Code.h"

#include <QAbstractListModel>
#include <QHash>

/// The passages that a query found, in the store's order, with the roles of `SnippetRowDelegate`.
class QueryResultsModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] const QueryResult &result(const QModelIndex &index) const { return m_results.at(index.row()); }
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

    /// Returns false for the same results as before, which are no change.
    bool setResults(const QList<QueryResult> &results);
    /// Those that the dots stand for. Codes that aren't among them have dots all the same.
    void setCodes(const QList<Code> &codes);

private:
    [[nodiscard]] QList<QColor> dotsOf(const QueryResult &result) const;
    [[nodiscard]] QString spoken(const QueryResult &result) const;

    QList<QueryResult> m_results;
    QHash<QUuid, Code> m_codes;
};
