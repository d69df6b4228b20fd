#include "workspace/results/WordFreqResultsView.h"

#include "kit/controls/EmptyState.h"
#include "kit/controls/PlainButton.h"
#include "kit/lists/SnippetList.h"
#include "kit/lists/SnippetRowDelegate.h"
#include "kit/theme/FocusRing.h"
#include "library/LibraryStore.h"
#include "platform/LocaleText.h"
#include "workspace/results/OccurrenceListModel.h"
#include "workspace/results/ResultPage.h"
#include "workspace/results/TermListModel.h"
#include "workspace/results/TermRowDelegate.h"

#include <QHBoxLayout>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 34;
constexpr int defaultLineCount = 3;
/// So that the way back to the terms is close to the way back to the documents.
constexpr int takenFromHead = 8;
constexpr int gapBelowTopTerms = 3;

/// Shows a list from its top, with the keyboard nowhere in it.
void startAnew(RowList &list)
{
    list.setCurrentInPlace({}, QItemSelectionModel::NoUpdate);
    list.scrollToTop();
}

/// For the widget that takes the place of `widget`, which is about to be hidden.
Qt::FocusReason reasonAfter(const QWidget &widget)
{
    return FocusRing::isDueTo(widget) ? Qt::TabFocusReason : Qt::OtherFocusReason;
}

} // namespace

WordFreqResultsView::WordFreqResultsView(LibraryStore &store, QWidget *parent)
    : ListColumn(parent),
      m_store(store),
      m_terms(new TermListModel(this)),
      m_occurrences(new OccurrenceListModel(this)),
      m_pages(new QStackedWidget(this))
{
    addBackButton([this] { m_store.goToDocuments(); });
    shortenHead(takenFromHead);
    addTermPage();
    addOccurrencePage();
    body().addWidget(m_pages, 1);
    connect(&m_store.wordFreqScopeLabel(), &Notifier::changed, this, &WordFreqResultsView::invalidate);
    connect(&m_store.wordFreqItems(), &Notifier::changed, this, &WordFreqResultsView::invalidate);
    connect(&m_store.wordFreqSelectedTerm(), &Notifier::changed, this, &WordFreqResultsView::invalidate);
    connect(&m_store.wordFreqOccurrences(), &Notifier::changed, this, &WordFreqResultsView::invalidate);
}

void WordFreqResultsView::addTermPage()
{
    auto *list = new RowList(u"Terms"_s);
    list->setObjectName(u"termList"_s);
    list->setSelectionMode(QAbstractItemView::NoSelection);
    list->setItemDelegate(new TermRowDelegate(list));
    list->setModel(m_terms);
    auto *empty =
        new EmptyState(u"textformat.abc"_s, iconSize, u"No Terms"_s, u"Nothing countable found in this scope."_s);
    empty->setObjectName(u"noTerms"_s);
    m_termPage = new ResultPage(list, empty, m_pages);
    m_termPage->setTopPadding(takenFromHead);
    m_pages->addWidget(m_termPage);
    connect(list, &RowList::acted, this, &WordFreqResultsView::chooseTerm);
}

void WordFreqResultsView::addOccurrencePage()
{
    auto *delegate = new SnippetRowDelegate(this);
    auto *list = new SnippetList(u"Occurrences"_s, delegate->heightFor(defaultLineCount));
    list->setObjectName(u"occurrenceList"_s);
    list->setItemDelegate(delegate);
    list->setModel(m_occurrences);
    auto *empty = new EmptyState(u"text.magnifyingglass"_s, iconSize, u"No Occurrences"_s);
    empty->setObjectName(u"noOccurrences"_s);
    m_occurrencePage = new ResultPage(list, empty, m_pages);
    auto *topTerms = new PlainButton(u"chevron.left"_s, u"Top terms"_s, m_occurrencePage);
    topTerms->setObjectName(u"topTerms"_s);
    m_occurrencePage->addTopRow(makeBackRow(*topTerms), gapBelowTopTerms);
    QWidget::setTabOrder(topTerms, list);
    m_pages->addWidget(m_occurrencePage);
    connect(topTerms, &QPushButton::clicked, this, [this, topTerms] { goToTerms(reasonAfter(*topTerms)); });
    connect(list, &RowList::acted, this, &WordFreqResultsView::reveal);
}

void WordFreqResultsView::render()
{
    renderTerms();
    const std::optional<QString> &term = m_store.wordFreqSelectedTerm().get();
    if (term)
        renderOccurrences(*term);
    else
        m_occurrences->setOccurrences({}, {}); // nobody else holds them any more
    m_pages->setCurrentWidget(term ? m_occurrencePage : m_termPage);
}

void WordFreqResultsView::renderTerms()
{
    const QList<WordFrequency::Item> &items = m_store.wordFreqItems().get();
    if (m_terms->setItems(items))
        startAnew(m_termPage->list());
    m_termPage->render(m_store.wordFreqScopeLabel().get(), LocaleText::number(items.size()) + u" terms"_s);
}

void WordFreqResultsView::renderOccurrences(const QString &term)
{
    const OccurrenceList &occurrences = m_store.wordFreqOccurrences().get();
    if (m_occurrences->setOccurrences(term, occurrences))
        startAnew(m_occurrencePage->list());
    m_occurrencePage->render(u"“"_s + term + u"”"_s,
        LocaleText::number(occurrences.size()) + (occurrences.size() == 1 ? u" occurrence"_s : u" occurrences"_s));
}

void WordFreqResultsView::chooseTerm(const QModelIndex &index)
{
    const QString term = m_terms->item(index).term; // the list may change under it
    const Qt::FocusReason reason = reasonAfter(m_termPage->list());
    m_store.selectWordFreqTerm(term);
    m_occurrencePage->takeFocus(reason);
}

void WordFreqResultsView::goToTerms(Qt::FocusReason reason)
{
    m_store.wordFreqSelectedTerm().set({});
    m_store.wordFreqOccurrences().set({});
    m_termPage->takeFocus(reason);
}

void WordFreqResultsView::reveal(const QModelIndex &index)
{
    const WordFrequency::Occurrence occurrence = m_occurrences->occurrence(index); // the list may change under it
    m_store.reveal(occurrence);
}
