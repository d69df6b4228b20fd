#pragma once

#include "workspace/lists/ListColumn.h"

/// The passages that the last query found, below the query in words.
class QueryResultsView final : public ListColumn {
    Q_OBJECT

public:
    explicit QueryResultsView(LibraryStore &store, QWidget *parent = nullptr);

protected:
    void render() override;
};
