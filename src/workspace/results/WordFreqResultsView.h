#pragma once

#include "kit/lists/ListColumn.h"

class LibraryStore;
class OccurrenceListModel;
class ResultPage;
class TermListModel;
class QModelIndex;
class QStackedWidget;

/// The most frequent terms of the last count, or once a term is chosen, the places where it stands. Which of the two is
/// shown follows the store's chosen term alone.
class WordFreqResultsView final : public ListColumn {
    Q_OBJECT

public:
    explicit WordFreqResultsView(LibraryStore &store, QWidget *parent = nullptr);

protected:
    void render() override;

private:
    void addTermPage();
    void addOccurrencePage();
    void renderTerms();
    void renderOccurrences(const QString &term);
    void chooseTerm(const QModelIndex &index);
    void goToTerms(Qt::FocusReason reason);
    void reveal(const QModelIndex &index);

    LibraryStore &m_store;
    TermListModel *m_terms;
    OccurrenceListModel *m_occurrences;
    QStackedWidget *m_pages;
    ResultPage *m_termPage = nullptr;
    ResultPage *m_occurrencePage = nullptr;
};
