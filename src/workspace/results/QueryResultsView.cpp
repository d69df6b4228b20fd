#include "workspace/results/QueryResultsView.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/EmptyState.h"
#include "kit/controls/Hairline.h"
#include "kit/controls/PlainButton.h"
#include "kit/lists/ListMetrics.h"
#include "kit/lists/SnippetList.h"
#include "kit/lists/SnippetRowDelegate.h"
#include "kit/theme/Fonts.h"
#include "library/LibraryStore.h"
#include "platform/LocaleText.h"
#include "workspace/results/QueryResultsModel.h"
#include "workspace/results/QuerySummary.h"

#include <QHBoxLayout>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 34;
constexpr int defaultLineCount = 2;
constexpr int headerSpacing = 4;
constexpr int headerBottom = 10;

} // namespace

QueryResultsView::QueryResultsView(LibraryStore &store, QWidget *parent)
    : ListColumn(parent),
      m_store(store),
      m_model(new QueryResultsModel(this)),
      m_summary(new QuerySummary(this)),
      m_count(new ElidedLabel({}, Fonts::caption(), Symbols::Tint::secondary, this)),
      m_pages(new QStackedWidget(this))
{
    addBackButton([this] { m_store.goToDocuments(); });
    addHeader();
    addPages();
    connect(&m_store.queryResults(), &Notifier::changed, this, &QueryResultsView::invalidate);
    connect(&m_store.activeQuery(), &Notifier::changed, this, &QueryResultsView::invalidate);
    connect(&m_store.codes(), &Notifier::changed, this, &QueryResultsView::invalidate);
    connect(m_list, &RowList::acted, this, &QueryResultsView::reveal);
}

void QueryResultsView::addHeader()
{
    m_summary->setObjectName(u"querySummary"_s);
    m_count->setObjectName(u"passageCount"_s);
    auto *header = new QVBoxLayout;
    header->setContentsMargins(ListMetrics::contentInset, 0, ListMetrics::contentInset, headerBottom);
    header->setSpacing(headerSpacing);
    header->addWidget(m_summary);
    header->addWidget(m_count);
    body().addLayout(header);
    body().addWidget(new Hairline(Hairline::Place::surface, Qt::Horizontal, this));
}

void QueryResultsView::addPages()
{
    auto *delegate = new SnippetRowDelegate(this);
    m_list = new SnippetList(u"Passages"_s, delegate->heightFor(defaultLineCount), m_pages);
    m_list->setObjectName(u"resultList"_s);
    m_list->setItemDelegate(delegate);
    m_list->setModel(m_model);
    m_noMatches = new EmptyState(u"text.magnifyingglass"_s, iconSize, u"No Matches"_s,
        u"No passages match this query.\nTry “Any of the codes”, fewer codes, or a different filter."_s, m_pages);
    m_noMatches->setObjectName(u"noMatches"_s);
    m_pages->addWidget(m_list);
    m_pages->addWidget(m_noMatches);
    body().addWidget(m_pages, 1);
}

void QueryResultsView::render()
{
    m_summary->setText(m_store.querySummary());
    m_model->setCodes(m_store.codes().get());
    m_list->viewport()->update();
    renderResults();
}

void QueryResultsView::renderResults()
{
    const QList<QueryResult> &results = m_store.queryResults().get();
    m_count->setText(LocaleText::number(results.size()) + (results.size() == 1 ? u" passage"_s : u" passages"_s));
    m_pages->setCurrentWidget(results.isEmpty() ? static_cast<QWidget *>(m_noMatches) : m_list);
    if (!m_model->setResults(results))
        return;
    m_list->setCurrentInPlace({}, QItemSelectionModel::NoUpdate);
    m_list->scrollToTop();
}

void QueryResultsView::reveal(const QModelIndex &index)
{
    const QueryResult result = m_model->result(index); // the list may change under it
    m_store.reveal(result);
}
