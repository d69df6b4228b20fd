#include "workspace/results/WordFreqResultsView.h"

#include "analysis/TextMatches.h"
#include "kit/controls/ElidedLabel.h"
#include "kit/controls/EmptyState.h"
#include "kit/controls/PlainButton.h"
#include "kit/lists/RowDelegate.h"
#include "kit/lists/RowLine.h"
#include "kit/lists/SnippetList.h"
#include "kit/lists/SnippetRowDelegate.h"
#include "kit/theme/FocusRing.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Theme.h"
#include "library/LibraryStore.h"
#include "platform/LocaleText.h"
#include "workspace/results/ResultPage.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QStackedWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 34;
constexpr int defaultLineCount = 3;
/// Brings the two back buttons closer together.
constexpr int takenFromHead = 8;
constexpr int gapBelowTopTerms = 3;
constexpr int titleSpacing = 5;

ElidedLabel *makeTitle()
{
    auto *title = new ElidedLabel({}, Fonts::callout(), Symbols::Tint::text);
    title->setObjectName(u"resultTitle"_s);
    return title;
}

/// What a term's row has beside its `Qt::DisplayRole`.
enum Role {
    countRole = Qt::UserRole + 1, ///< qint64
    topCountRole, ///< qint64, that of the first row
};

/// Paints a term with a bar that compares its count with that of the top term.
class TermRows final : public RowDelegate {
public:
    explicit TermRows(QObject *parent)
        : RowDelegate({.height = Metrics::rowHeightFor(Metrics::rowHeight, QFontMetrics(Fonts::body()).height()),
                          .inset = ListMetrics::rowInset,
                          .radius = Metrics::listRowRadius,
                          .airAbove = ListMetrics::airAbove},
            parent)
    {
    }

protected:
    bool fill(RowLine &line, const QModelIndex &index) const override
    {
        constexpr double maxBar = 90;
        constexpr double minBar = 4;
        constexpr int barHeight = 6;
        constexpr int minCountWidth = 34;
        constexpr int gap = 8;
        const ThemeColors &colors = Theme::colors();
        const qint64 count = index.data(countRole).toLongLong();
        const qint64 topCount = index.data(topCountRole).toLongLong();
        line.skip(ListMetrics::contentInset);
        line.skipAtEnd(ListMetrics::contentInset);
        // All counts take the room of the widest, so that all bars end in one line.
        line.count(count, m_countFont, gap,
            std::max(minCountWidth, QFontMetrics(m_countFont).horizontalAdvance(LocaleText::number(topCount))));
        line.bar(std::max(double(count) * maxBar / double(topCount), minBar), barHeight, 2 * gap, colors.wordBar);
        return line.text(index.data().toString(), m_termFont, colors.text);
    }

private:
    QFont m_termFont = Fonts::body();
    QFont m_countFont = Fonts::caption();
};

// Both are more than the lines of a row can hold. The match is near the beginning of a context.
constexpr qsizetype searchedLength = 1024;
constexpr qsizetype comparedLength = 800;

TextRange firstMatch(const QString &context, const QString &term)
{
    return TextMatches::firstIn(QStringView(context).first(std::min(searchedLength, context.size())),
        QStringView(term).first(std::min(comparedLength, term.size())));
}

/// Why the widget that replaces `widget` gets the focus: with the keyboard's ring if that was shown before.
Qt::FocusReason reasonAfter(const QWidget &widget)
{
    return FocusRing::isDueTo(widget) ? Qt::TabFocusReason : Qt::OtherFocusReason;
}

} // namespace

WordFreqResultsView::WordFreqResultsView(LibraryStore &store, QWidget *parent)
    : ListColumn(parent),
      m_store(store),
      m_terms(new ListModel<QList<WordFrequency::Item>>(
          [this](const WordFrequency::Item &item, int role) { return describeTerm(item, role); }, this)),
      m_occurrences(new ListModel<OccurrenceList>(
          [this](const WordFrequency::Occurrence &place, int role) { return describeOccurrence(place, role); }, this)),
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
    list->setItemDelegate(new TermRows(list));
    list->setModel(m_terms);
    auto *empty =
        new EmptyState(u"textformat.abc"_s, iconSize, u"No Terms"_s, u"Nothing countable found in this scope."_s);
    empty->setObjectName(u"noTerms"_s);
    m_termPage = new ResultPage(m_scope = makeTitle(), titleSpacing, list, empty);
    m_termPage->setTopPadding(takenFromHead);
    m_pages->addWidget(m_termPage);
    connect(list, &RowList::acted, this, &WordFreqResultsView::chooseTerm);
}

void WordFreqResultsView::addOccurrencePage()
{
    auto *list = SnippetRowDelegate::makeList(u"Occurrences"_s, u"occurrenceList"_s, defaultLineCount, m_occurrences);
    auto *empty = new EmptyState(u"text.magnifyingglass"_s, iconSize, u"No Occurrences"_s);
    empty->setObjectName(u"noOccurrences"_s);
    m_occurrencePage = new ResultPage(m_term = makeTitle(), titleSpacing, list, empty);
    auto *topTerms = new PlainButton(u"chevron.left"_s, u"Top terms"_s, m_occurrencePage);
    topTerms->setObjectName(u"topTerms"_s);
    m_occurrencePage->addTopRow(makeBackRow(*topTerms), gapBelowTopTerms);
    m_pages->addWidget(m_occurrencePage);
    QWidget::setTabOrder(topTerms, list); // once both are in the window: coming in changes the order
    connect(topTerms, &QPushButton::clicked, this, [this, topTerms] { goToTerms(reasonAfter(*topTerms)); });
    connect(
        list, &RowList::acted, this, [this](const QModelIndex &index) { m_store.reveal(m_occurrences->item(index)); });
}

QVariant WordFreqResultsView::describeTerm(const WordFrequency::Item &item, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return item.term;
    case Qt::AccessibleTextRole:
        return u"%1, %2"_s.arg(item.term, RowText::counted(item.count, u"occurrence"_s));
    case countRole:
        return item.count;
    case topCountRole:
        return m_terms->items().first().count;
    default:
        return {};
    }
}

/// The first match of the term in each context is emphasised.
QVariant WordFreqResultsView::describeOccurrence(const WordFrequency::Occurrence &place, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return place.context;
    case Qt::AccessibleTextRole:
        return u"%1, %2"_s.arg(place.context, place.documentTitle);
    case SnippetRowDelegate::documentTitleRole:
        return place.documentTitle;
    case SnippetRowDelegate::emphasisStartRole:
        return firstMatch(place.context, m_shownTerm).location;
    case SnippetRowDelegate::emphasisLengthRole:
        return firstMatch(place.context, m_shownTerm).length;
    default:
        return {};
    }
}

void WordFreqResultsView::render()
{
    renderTerms();
    const std::optional<QString> &term = m_store.wordFreqSelectedTerm().get();
    if (term)
        renderOccurrences(*term);
    else
        m_occurrences->setItems({}); // the store has dropped them, and they may be millions
    m_pages->setCurrentWidget(term ? m_occurrencePage : m_termPage);
}

void WordFreqResultsView::renderTerms()
{
    if (m_terms->setItems(m_store.wordFreqItems().get()))
        m_termPage->list().startAnew();
    m_scope->setText(m_store.wordFreqScopeLabel().get());
    m_termPage->renderCount(u"%1 terms"_s.arg(LocaleText::number(m_terms->rowCount()))); // a single one, too
}

void WordFreqResultsView::renderOccurrences(const QString &term)
{
    m_shownTerm = term;
    if (m_occurrences->setItems(m_store.wordFreqOccurrences().get()))
        m_occurrencePage->list().startAnew();
    m_term->setText(u"“%1”"_s.arg(term));
    m_occurrencePage->renderCount(RowText::counted(m_occurrences->rowCount(), u"occurrence"_s));
}

void WordFreqResultsView::chooseTerm(const QModelIndex &index)
{
    const Qt::FocusReason reason = reasonAfter(m_termPage->list());
    m_store.selectWordFreqTerm(m_terms->item(index).term);
    takeFocus(reason);
}

void WordFreqResultsView::goToTerms(Qt::FocusReason reason)
{
    m_store.wordFreqSelectedTerm().set({});
    m_store.wordFreqOccurrences().set({});
    takeFocus(reason);
}
