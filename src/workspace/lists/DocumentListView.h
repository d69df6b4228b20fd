#pragma once

#include "kit/lists/ListColumn.h"
#include "kit/lists/ListModel.h"
#include "records/Document.h"

class EmptyState;
class LibraryStore;
class RowList;
class SearchField;
class QStackedWidget;

/// The documents of the current project, a search field for them, and a welcome while there are none.
class DocumentListView final : public ListColumn {
    Q_OBJECT

public:
    explicit DocumentListView(LibraryStore &store, QWidget *parent = nullptr);

protected:
    void render() override;

private:
    void addSearchField();
    void addPages();
    [[nodiscard]] EmptyState *makeWelcome();

    void renderSearchText();
    /// Selects the store's document, if it is listed, and scrolls there.
    void renderSelection();
    /// Scrolls to the selected document if a search has found it, or else to the top.
    void showFirstHits();
    [[nodiscard]] QModelIndex selectedIndex() const;
    [[nodiscard]] QWidget *pageToShow() const;
    void takeSelection();
    void showMenu(const QModelIndex &index, const QPoint &globalPosition);
    void askForName(const Document &document);

    LibraryStore &m_store;
    ListModel<QList<Document>> *m_model;
    SearchField *m_search = nullptr;
    QStackedWidget *m_pages = nullptr;
    RowList *m_list = nullptr;
    EmptyState *m_welcome = nullptr;
    EmptyState *m_noResults = nullptr;
    bool m_isRendering = false;
};
