#pragma once

#include "analysis/QueryResult.h"
#include "kit/lists/ListColumn.h"
#include "kit/lists/ListModel.h"
#include "records/Code.h"

#include <QColor>
#include <QHash>

class LibraryStore;
class QuerySummary;
class ResultPage;

/// The last query in words, and every passage that it found.
class QueryResultsView final : public ListColumn {
    Q_OBJECT

public:
    explicit QueryResultsView(LibraryStore &store, QWidget *parent = nullptr);

protected:
    void render() override;

private:
    void addPage();
    [[nodiscard]] QVariant describe(const QueryResult &result, int role) const;
    [[nodiscard]] QList<QColor> dotsOf(const QueryResult &result) const;
    [[nodiscard]] QString spoken(const QueryResult &result) const;

    LibraryStore &m_store;
    QHash<QUuid, Code> m_codes;
    ListModel<QList<QueryResult>> *m_model;
    QuerySummary *m_summary;
    ResultPage *m_page = nullptr;
};
