#include "workspace/RootView.h"

#include "kit/theme/FocusRing.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Roles.h"
#include "kit/theme/Symbols.h"
#include "library/LibraryStore.h"
#include "workspace/ErrorAlert.h"
#include "workspace/Menus.h"
#include "workspace/StatusBanner.h"
#include "workspace/lists/DocumentListView.h"
#include "workspace/lists/ExcerptListView.h"
#include "workspace/reader/ReaderPane.h"
#include "workspace/reader/ReaderView.h"
#include "workspace/results/QueryResultsView.h"
#include "workspace/results/WordFreqResultsView.h"
#include "workspace/sheets/SheetPresenter.h"
#include "workspace/sidebar/SidebarView.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QResizeEvent>
#include <QScreen>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int grabWidth = 7;
constexpr int hairline = 1;

/// QSplitter lays the handle's contents over the line and lets its margins overlap the columns.
class Handle final : public QSplitterHandle {
public:
    Handle(Qt::Orientation orientation, QSplitter *parent) : QSplitterHandle(orientation, parent)
    {
        constexpr int margin = (grabWidth - hairline) / 2;
        setContentsMargins(margin, 0, margin, 0);
        setAttribute(Qt::WA_MouseNoMask);
    }

protected:
    /// QSplitterHandle's own would set margins for a grab of five pixels, and each change of margins is a resize again.
    void resizeEvent(QResizeEvent *event) override
    {
        QWidget::resizeEvent(event); // NOLINT(bugprone-parent-virtual-call)
        setMask(contentsRect());
    }
};

/// Columns with a hairline between them, which can be taken hold of a few pixels beside it. No column can be dragged
/// away altogether.
class ColumnSplitter final : public QSplitter {
public:
    ColumnSplitter()
    {
        setHandleWidth(hairline);
        setChildrenCollapsible(false);
    }

protected:
    [[nodiscard]] QSplitterHandle *createHandle() override { return new Handle(orientation(), this); }
};

constexpr QSize defaultSize{1180, 780};
constexpr QSize maxFrame{16, 48}; // around the window; its true size isn't known before the window is shown
constexpr int sidebarWidth = 209; // 210 with its hairline
constexpr int toolbarSide = 14;

} // namespace

RootView::RootView(LibraryStore &store)
    : m_store(store),
      m_lists(new QStackedWidget),
      m_documents(new DocumentListView(store)),
      m_excerpts(new ExcerptListView(store)),
      m_queryResults(new QueryResultsView(store)),
      m_wordFreqResults(new WordFreqResultsView(store)),
      m_reader(new ReaderPane(store)),
      m_import(new QPushButton(Symbols::icon(u"plus"_s), u"Import"_s))
{
    setWindowTitle(u"Vorn"_s);
    for (QWidget *list : std::initializer_list<QWidget *>{m_documents, m_excerpts, m_queryResults, m_wordFreqResults})
        m_lists->addWidget(list);
    // A stack takes the minimum width of its pages over, but not their maximum.
    m_lists->setMinimumWidth(ListMetrics::minColumnWidth);
    m_lists->setMaximumWidth(ListMetrics::maxColumnWidth);

    auto *columns = new ColumnSplitter;
    columns->addWidget(new SidebarView(store));
    columns->addWidget(m_lists);
    columns->addWidget(buildReaderColumn());
    columns->setStretchFactor(0, 0);
    columns->setStretchFactor(1, 0);
    columns->setStretchFactor(2, 1);
    setCentralWidget(columns);
    Menus::build(*this, store, [this] { openFindBar(); });
    m_banner = new StatusBanner(store, this);
    new ErrorAlert(store, *this);
    new SheetPresenter(store, *this);

    resize(defaultSize.boundedTo(screen()->availableSize() - maxFrame));
    columns->setSizes(
        {sidebarWidth, ListMetrics::defaultColumnWidth, width() - sidebarWidth - ListMetrics::defaultColumnWidth});
    connect(&m_store.sidebarSelection(), &Notifier::changed, this, &RootView::renderSelection);
    renderSelection();
}

QWidget *RootView::buildReaderColumn()
{
    m_import->setObjectName(u"import"_s);
    setRole(*m_import, ButtonRole::bordered, ButtonSize::small);
    m_import->setToolTip(u"Import documents (txt · md · docx · rtf · pdf)"_s);
    connect(m_import, &QPushButton::clicked, this, [this] { m_store.presentImportPanel(); });
    connect(&m_store.isImporting(), &Notifier::changed, this,
        [this] { m_import->setEnabled(!m_store.isImporting().get()); });

    auto *column = new QWidget;
    column->setAutoFillBackground(true);
    column->setBackgroundRole(QPalette::Base);
    auto *toolbar = new QHBoxLayout;
    toolbar->setContentsMargins(toolbarSide, 0, toolbarSide, 0);
    toolbar->addStretch(1);
    toolbar->addWidget(m_import);
    auto *head = new QWidget;
    head->setLayout(toolbar);
    head->setFixedHeight(Metrics::columnHeadHeight);
    auto *rows = new QVBoxLayout(column);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_reader, 1);
    rows->insertWidget(0, head); // above the reader, but after it in the tab order
    return column;
}

void RootView::renderSelection()
{
    const std::optional<SidebarSelection> selection = m_store.sidebarSelection().get();
    showList(selection ? *listFor(*selection) : *m_documents);
    if (const auto *project = selection ? std::get_if<ProjectSelection>(&*selection) : nullptr)
        m_store.selectProject(project->projectID);
}

/// The focus goes to results that were asked for, and from a list that is hidden to the one that is shown, even while
/// another window is active: a sheet that has just been closed.
void RootView::showList(ListColumn &list)
{
    const QWidget *focused = focusWidget();
    const bool isResult = &list == m_queryResults || &list == m_wordFreqResults;
    const bool takesFocus = m_lists->currentWidget() != &list && (isResult || m_lists->isAncestorOf(focused));
    const bool cameByKeyboard = focused != nullptr && FocusRing::isDueTo(*focused);
    const Qt::FocusReason reason = cameByKeyboard ? Qt::TabFocusReason : Qt::OtherFocusReason;
    m_lists->setCurrentWidget(&list);
    if (takesFocus)
        list.takeFocus(reason);
}

ListColumn *RootView::listFor(const SidebarSelection &selection)
{
    if (const auto *code = std::get_if<CodeSelection>(&selection)) {
        m_excerpts->setCodeID(code->codeID);
        return m_excerpts;
    }
    if (std::holds_alternative<QuerySelection>(selection))
        return m_queryResults;
    if (std::holds_alternative<WordFreqSelection>(selection))
        return m_wordFreqResults;
    return m_documents;
}

void RootView::openFindBar()
{
    m_reader->reader().openFindBar();
}

/// Memos are saved while they are typed: only what couldn't be written to the disk is at stake here.
void RootView::closeEvent(QCloseEvent *event)
{
    const std::optional<QString> complaint = m_store.saveUnwrittenMemos();
    const bool wasWarned = std::exchange(m_wasWarned, complaint.has_value());
    const bool hasReadIt = wasWarned && !m_store.lastError().get();
    if (!complaint || hasReadIt)
        return QMainWindow::closeEvent(event);
    event->ignore();
    m_store.lastError().set(
        u"A memo couldn't be saved: %1\nClose the window again to leave without it."_s.arg(*complaint));
}

void RootView::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    m_banner->place();
}
