#include "workspace/lists/ExcerptListView.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/EmptyState.h"
#include "kit/controls/LongText.h"
#include "kit/lists/SnippetList.h"
#include "kit/lists/SnippetRowDelegate.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Roles.h"
#include "kit/theme/Theme.h"
#include "library/LibraryStore.h"
#include "workspace/lists/MemoBar.h"
#include "workspace/lists/StoreLookup.h"

#include <QHBoxLayout>
#include <QStackedWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 34;
constexpr int memoGapAbove = 1;
constexpr int memoGapBelow = 5;
constexpr int defaultLineCount = 2;

/// Whether passages read from both lists of documents are the same: texts never change, and memos don't matter.
bool holdSamePassages(const QList<Document> &one, const QList<Document> &other)
{
    return std::ranges::equal(one, other,
        [](const Document &left, const Document &right) { return left.id == right.id && left.title == right.title; });
}

} // namespace

ExcerptListView::ExcerptListView(LibraryStore &store, QWidget *parent)
    : ListColumn(parent),
      m_store(store),
      m_model(new ListModel<QList<ExcerptHit>>(
          [this](const ExcerptHit &hit, int role) { return describe(hit, role); }, this)),
      m_title(addTitle({}))
{
    m_pages = new QStackedWidget(this);
    m_content = makeContent();
    m_notFound = new EmptyState(u"questionmark.circle"_s, iconSize, u"Code Not Found"_s, {}, m_pages);
    m_notFound->setObjectName(u"codeNotFound"_s);
    m_pages->addWidget(m_content);
    m_pages->addWidget(m_notFound);
    body().addWidget(m_pages);

    connect(&m_store.codes(), &Notifier::changed, this, &ExcerptListView::invalidate);
    connect(&m_store.codingRevision(), &Notifier::changed, this, &ExcerptListView::noteCodings);
    connect(&m_store.documents(), &Notifier::changed, this, &ExcerptListView::noteDocuments);
    connect(m_memo, &MemoBar::committed, this, &ExcerptListView::saveMemo);
    connect(m_list, &RowList::acted, this, [this](const QModelIndex &index) { m_store.reveal(m_model->item(index)); });
}

QWidget *ExcerptListView::makeContent()
{
    auto *content = new QWidget(m_pages);
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins({});
    column->setSpacing(0);
    addBackRow([this] { m_store.goToDocuments(); }, *column);

    auto *memoRow = new QHBoxLayout;
    memoRow->setContentsMargins(ListMetrics::rowInset, memoGapAbove, ListMetrics::rowInset, memoGapBelow);
    m_memo = new MemoBar(u"Code memo…"_s, content);
    memoRow->addWidget(m_memo);
    column->addLayout(memoRow);
    column->addWidget(makeHairline());

    m_excerptPages = new QStackedWidget(content);
    m_list = SnippetRowDelegate::makeList(u"Excerpts"_s, u"excerptList"_s, defaultLineCount, m_model);
    m_noExcerpts = new EmptyState(u"doc.text.magnifyingglass"_s, iconSize, u"No Excerpts Yet"_s, {}, m_excerptPages);
    m_noExcerpts->setObjectName(u"noExcerpts"_s);
    m_excerptPages->addWidget(m_list);
    m_excerptPages->addWidget(m_noExcerpts);
    column->addWidget(m_excerptPages, 1);
    return content;
}

QVariant ExcerptListView::describe(const ExcerptHit &hit, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return hit.snippet.beginning(SnippetRowDelegate::maxUnits);
    case Qt::AccessibleTextRole:
        return u"%1, %2"_s.arg(hit.snippet.toString(), hit.documentTitle);
    case SnippetRowDelegate::documentTitleRole:
        return hit.documentTitle;
    case SnippetRowDelegate::dotColorsRole:
        return QVariant::fromValue(QList{m_color});
    default:
        return {};
    }
}

void ExcerptListView::setCodeID(const QUuid &codeID)
{
    if (codeID == m_codeID)
        return;
    m_memo->finish();
    m_codeID = codeID;
    m_excerptsAreStale = true;
    renderMemo();
    invalidate();
    m_list->startAnew();
}

void ExcerptListView::noteCodings()
{
    m_excerptsAreStale = true;
    invalidate();
}

void ExcerptListView::noteDocuments()
{
    if (holdSamePassages(m_documents, m_store.documents().get()))
        return;
    m_excerptsAreStale = true;
    invalidate();
}

void ExcerptListView::render()
{
    renderMemo();
    const std::optional<Code> shown = StoreLookup::code(m_store, m_codeID);
    m_title->setText(shown ? shown->name : QString());
    if (shown)
        renderExcerpts(*shown);
    m_pages->setCurrentWidget(shown ? m_content : m_notFound);
}

void ExcerptListView::renderMemo()
{
    const std::optional<QString> memo = m_store.codeMemo(m_codeID);
    const bool isAnother = m_memoCodeID != m_codeID;
    if (!memo && !isAnother)
        return;
    if (isAnother || *memo != m_memo->text()) // another program may have written it
        m_memo->setText(memo.value_or(QString()));
    m_memoCodeID = memo ? m_codeID : QUuid();
}

void ExcerptListView::renderExcerpts(const Code &code)
{
    m_color = Theme::codeColor(code.colorHex);
    m_list->viewport()->update();
    m_noExcerpts->setDescription(
        u"Select text in a document and add “%1”\nto see its excerpts here."_s.arg(LongText::shortened(code.name)));
    if (!std::exchange(m_excerptsAreStale, false))
        return;
    m_documents = m_store.documents().get();
    m_model->setItems(m_store.excerpts(m_codeID));
    m_excerptPages->setCurrentWidget(m_model->rowCount() > 0 ? static_cast<QWidget *>(m_list) : m_noExcerpts);
}

void ExcerptListView::saveMemo(const QString &memo)
{
    const std::optional<Code> shown = StoreLookup::code(m_store, m_codeID);
    if (!shown || m_memoCodeID != m_codeID)
        return;
    if (m_store.codeMemo(m_codeID) != memo || !m_store.isMemoWritten(m_codeID))
        m_store.setCodeMemo(*shown, memo);
}
