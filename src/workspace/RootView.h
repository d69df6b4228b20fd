#pragma once

#include "library/SidebarSelection.h"

#include <QMainWindow>

class DocumentListView;
class ExcerptListView;
class LibraryStore;
class ListColumn;
class QPushButton;
class QStackedWidget;
class QueryResultsView;
class ReaderPane;
class StatusBanner;
class WordFreqResultsView;

/// The main window: sidebar, list and reader, side by side. It only composes them and decides which list the middle
/// column shows.
class RootView final : public QMainWindow {
    Q_OBJECT

public:
    explicit RootView(LibraryStore &store);

    [[nodiscard]] StatusBanner &banner() const { return *m_banner; }
    void openFindBar();

protected:
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QWidget *buildReaderColumn();
    void renderSelection();
    /// The list that belongs to the sidebar's selection, made to show it.
    [[nodiscard]] ListColumn *listFor(const SidebarSelection &selection);
    void showList(ListColumn &list);

    LibraryStore &m_store;
    QStackedWidget *m_lists;
    DocumentListView *m_documents;
    ExcerptListView *m_excerpts;
    QueryResultsView *m_queryResults;
    WordFreqResultsView *m_wordFreqResults;
    ReaderPane *m_reader;
    QPushButton *m_import;
    StatusBanner *m_banner;
    bool m_wasWarned = false; ///< that closing again loses a memo
};
