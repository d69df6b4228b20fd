#pragma once

#include "kit/lists/ListColumn.h"

class DocumentListModel;
class EmptyState;
class LibraryStore;
class RowList;
class SearchField;
class QStackedWidget;
struct Document;

/// The documents of the current project, a search over them, and the welcome of an empty project.
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
    /// Selects the store's document, if it is shown.
    void renderSelection();
    [[nodiscard]] QWidget *pageToShow() const;
    void takeSelection();
    void showMenu(const QModelIndex &index, const QPoint &globalPosition);
    void askForName(const Document &document);

    LibraryStore &m_store;
    DocumentListModel *m_model;
    SearchField *m_search = nullptr;
    QStackedWidget *m_pages = nullptr;
    RowList *m_list = nullptr;
    EmptyState *m_welcome = nullptr;
    EmptyState *m_noResults = nullptr;
    bool m_isRendering = false;
};
