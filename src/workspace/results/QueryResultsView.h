#pragma once

#include "kit/lists/ListColumn.h"

class EmptyState;
class LibraryStore;
class QueryResultsModel;
class QuerySummary;
class SnippetList;
class QStackedWidget;

/// The last query in words, and every passage that it found.
class QueryResultsView final : public ListColumn {
    Q_OBJECT

public:
    explicit QueryResultsView(LibraryStore &store, QWidget *parent = nullptr);

protected:
    void render() override;

private:
    void addHeader();
    void addPages();
    void renderResults();
    void reveal(const QModelIndex &index);

    LibraryStore &m_store;
    QueryResultsModel *m_model;
    QuerySummary *m_summary;
    ElidedLabel *m_count;
    QStackedWidget *m_pages;
    SnippetList *m_list = nullptr;
    EmptyState *m_noMatches = nullptr;
};
