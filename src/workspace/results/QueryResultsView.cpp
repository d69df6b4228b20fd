#include "workspace/results/QueryResultsView.h"

#include "workspace/controls/PlainButton.h"

#include <QVBoxLayout>

QueryResultsView::QueryResultsView(LibraryStore &store, QWidget *parent) : ListColumn(parent)
{
    addBackRow(store, body());
}

void QueryResultsView::render()
{
}
