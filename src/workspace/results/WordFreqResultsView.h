#pragma once

#include "analysis/OccurrenceList.h"
#include "kit/lists/ListColumn.h"
#include "kit/lists/ListModel.h"

class LibraryStore;
class ResultPage;
class QStackedWidget;

/// The most frequent terms of the last count, or, while the store has a chosen term, the places where that occurs.
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
    [[nodiscard]] QVariant describeTerm(const WordFrequency::Item &item, int role) const;
    [[nodiscard]] QVariant describeOccurrence(const WordFrequency::Occurrence &place, int role) const;

    LibraryStore &m_store;
    QString m_shownTerm; ///< whose occurrences are listed
    ListModel<QList<WordFrequency::Item>> *m_terms;
    ListModel<OccurrenceList> *m_occurrences;
    QStackedWidget *m_pages;
    ElidedLabel *m_scope = nullptr;
    ElidedLabel *m_term = nullptr;
    ResultPage *m_termPage = nullptr;
    ResultPage *m_occurrencePage = nullptr;
};
