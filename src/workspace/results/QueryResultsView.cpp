#include "workspace/results/QueryResultsView.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/EmptyState.h"
#include "kit/lists/RowLine.h"
#include "kit/lists/SnippetLayout.h"
#include "kit/lists/SnippetList.h"
#include "kit/lists/SnippetRowDelegate.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Theme.h"
#include "library/LibraryStore.h"
#include "workspace/results/ResultPage.h"

#include <QPainter>
#include <QResizeEvent>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int lineHeight = 17;
constexpr int maxLineCount = 2;

} // namespace

QuerySummary::QuerySummary(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setFont(Fonts::callout());
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void QuerySummary::setText(const QString &text)
{
    setAccessibleName(text);
    QLabel::setText(text);
    fitHeight();
}

SnippetLayout QuerySummary::layOut() const
{
    return {text(),
        {.font = font(),
            .width = width(),
            .lineHeight = lineHeight,
            .maxLineCount = maxLineCount,
            .direction = layoutDirection()}};
}

/// Not left to heightForWidth(): the column's layout, asked for another width, cut the second line off.
void QuerySummary::fitHeight()
{
    setFixedHeight(layOut().height());
}

void QuerySummary::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    if (event->size().width() != event->oldSize().width())
        fitHeight();
}

void QuerySummary::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(Theme::colors().text);
    layOut().draw(painter, {});
}

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
        colors.append(Theme::codeColor(m_codes.value(codeID).colorHex));
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
