#include "workspace/results/QueryResultsView.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/EmptyState.h"
#include "kit/lists/RowText.h"
#include "kit/lists/SnippetList.h"
#include "kit/lists/SnippetRowDelegate.h"
#include "kit/theme/CodeColor.h"
#include "library/LibraryStore.h"
#include "workspace/results/QuerySummary.h"
#include "workspace/results/ResultPage.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

QueryResultsView::QueryResultsView(LibraryStore &store, QWidget *parent)
    : ListColumn(parent),
      m_store(store),
      m_model(new ListModel<QList<QueryResult>>(
          [this](const QueryResult &result, int role) { return describe(result, role); }, this)),
      m_summary(new QuerySummary)
{
    addBackButton([this] { m_store.goToDocuments(); });
    addPage();
    connect(&m_store.queryResults(), &Notifier::changed, this, &QueryResultsView::invalidate);
    connect(&m_store.activeQuery(), &Notifier::changed, this, &QueryResultsView::invalidate);
    connect(&m_store.codes(), &Notifier::changed, this, &QueryResultsView::invalidate);
    connect(&m_page->list(), &RowList::acted, this,
        [this](const QModelIndex &index) { m_store.reveal(m_model->item(index)); });
}

void QueryResultsView::addPage()
{
    constexpr int iconSize = 34;
    constexpr int defaultLineCount = 2;
    constexpr int spacing = 4;
    auto *noMatches = new EmptyState(u"text.magnifyingglass"_s, iconSize, u"No Matches"_s,
        u"No passages match this query.\nTry “Any of the codes”, fewer codes, or a different filter."_s);
    noMatches->setObjectName(u"noMatches"_s);
    m_summary->setObjectName(u"querySummary"_s);
    m_page = new ResultPage(m_summary, spacing,
        SnippetRowDelegate::makeList(u"Passages"_s, u"resultList"_s, defaultLineCount, m_model), noMatches);
    m_page->count().setObjectName(u"passageCount"_s);
    body().addWidget(m_page);
}

void QueryResultsView::render()
{
    m_summary->setText(m_store.querySummary());
    m_codes.clear();
    for (const Code &code : m_store.codes().get())
        m_codes.insert(code.id, code);
    if (m_model->setItems(m_store.queryResults().get()))
        m_page->list().startAnew();
    m_page->list().viewport()->update(); // codes may have other colours
    m_page->renderCount(RowText::counted(m_model->rowCount(), u"passage"_s));
}

QVariant QueryResultsView::describe(const QueryResult &result, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return result.snippet.beginning(SnippetRowDelegate::maxUnits);
    case Qt::AccessibleTextRole:
        return spoken(result);
    case SnippetRowDelegate::documentTitleRole:
        return result.documentTitle;
    case SnippetRowDelegate::dotColorsRole:
        return QVariant::fromValue(dotsOf(result));
    default:
        return {};
    }
}

/// Codes that are gone have dots all the same.
QList<QColor> QueryResultsView::dotsOf(const QueryResult &result) const
{
    QList<QColor> colors;
    for (const QUuid &codeID : result.codeIDs.first(std::min(result.codeIDs.size(), SnippetRowDelegate::maxDots)))
        colors.append(CodeColor::orAccent(m_codes.value(codeID).colorHex));
    return colors;
}

/// The passage, its document, and the names of its codes, since dots can't be heard.
QString QueryResultsView::spoken(const QueryResult &result) const
{
    QStringList parts{result.snippet.toString(), result.documentTitle};
    for (const QUuid &codeID : result.codeIDs) {
        if (const auto code = m_codes.constFind(codeID); code != m_codes.constEnd())
            parts.append(code->name);
    }
    return parts.join(u", "_s);
}
