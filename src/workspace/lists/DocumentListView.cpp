#include "workspace/lists/DocumentListView.h"

#include "kit/controls/Alert.h"
#include "kit/controls/ElidedLabel.h"
#include "kit/controls/EmptyState.h"
#include "kit/controls/SearchField.h"
#include "kit/controls/Shortened.h"
#include "kit/lists/RowList.h"
#include "kit/theme/Roles.h"
#include "library/LibraryStore.h"
#include "workspace/lists/DocumentListModel.h"
#include "workspace/lists/DocumentRowDelegate.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStackedWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 34;
constexpr qsizetype longestInTitle = 60;

std::optional<Document> currentState(const LibraryStore &store, const QUuid &id)
{
    const QList<Document> &documents = store.documents().get();
    const auto found = std::ranges::find(documents, id, &Document::id);
    return found == documents.end() ? std::nullopt : std::optional(*found);
}

} // namespace

DocumentListView::DocumentListView(LibraryStore &store, QWidget *parent)
    : ListColumn(parent),
      m_store(store),
      m_model(new DocumentListModel(this))
{
    ElidedLabel *title = addTitle(u"Documents"_s);
    title->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    addSearchField();
    addPages();
    connect(&m_store.documents(), &Notifier::changed, this, &DocumentListView::invalidate);
    connect(&m_store.searchText(), &Notifier::changed, this, &DocumentListView::invalidate);
    connect(&m_store.selectedDocumentID(), &Notifier::changed, this, &DocumentListView::renderSelection);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &DocumentListView::takeSelection);
    connect(m_list, &RowList::menuWanted, this, &DocumentListView::showMenu);
}

void DocumentListView::addSearchField()
{
    m_search = new SearchField(u"Search documents"_s, this);
    m_search->setObjectName(u"documentSearch"_s);
    head().addWidget(m_search, 1);
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString &text) { m_store.searchText().set(text); });
    connect(&m_store.searchText(), &Notifier::changed, this, &DocumentListView::renderSearchText);
    renderSearchText();
}

void DocumentListView::addPages()
{
    m_pages = new QStackedWidget(this);
    m_list = new RowList(u"Documents"_s, m_pages);
    m_list->setObjectName(u"documentList"_s);
    m_list->setUniformItemSizes(true);
    m_list->setModel(m_model);
    m_list->setItemDelegate(new DocumentRowDelegate(m_list));
    m_welcome = makeWelcome();
    m_noResults =
        new EmptyState(u"magnifyingglass"_s, iconSize, {}, u"Check the spelling or try a new search."_s, m_pages);
    m_noResults->setObjectName(u"noResults"_s);
    for (QWidget *page : std::initializer_list<QWidget *>{m_list, m_welcome, m_noResults})
        m_pages->addWidget(page);
    body().addWidget(m_pages);
}

EmptyState *DocumentListView::makeWelcome()
{
    auto *welcome = new EmptyState(u"text.book.closed"_s, iconSize, u"No Documents Yet"_s,
        u"Import interviews, field notes, or articles\n(txt · md · docx · pdf) to begin."_s, m_pages);
    welcome->setObjectName(u"noDocuments"_s);
    auto *import = new QPushButton(u"Import Documents…"_s, welcome);
    setRole(*import, ButtonRole::prominent);
    connect(import, &QPushButton::clicked, this, [this] { m_store.presentImportPanel(); });
    welcome->addButton(import);
    auto *sample = new QPushButton(u"Load Sample Content"_s, welcome);
    connect(sample, &QPushButton::clicked, this, [this] { m_store.loadSampleContent(); });
    welcome->addButton(sample);
    return welcome;
}

void DocumentListView::render()
{
    const QScopedValueRollback guard(m_isRendering, true);
    m_model->setDocuments(m_store.documents()->isEmpty() ? QList<Document>() : m_store.visibleDocuments());
    m_noResults->setTitle(u"No Results for “%1”"_s.arg(shortened(m_store.searchText().get(), longestInTitle)));
    m_pages->setCurrentWidget(pageToShow());
    const QModelIndex selected = m_model->indexOf(m_store.selectedDocumentID()->value_or(QUuid()));
    m_list->setCurrentInPlace(selected, QItemSelectionModel::ClearAndSelect);
}

QWidget *DocumentListView::pageToShow() const
{
    if (m_store.documents()->isEmpty())
        return m_welcome;
    const bool isFruitless = m_model->rowCount() == 0 && !m_store.searchText()->isEmpty();
    return isFruitless ? static_cast<QWidget *>(m_noResults) : m_list;
}

void DocumentListView::renderSearchText()
{
    const QString &text = m_store.searchText().get();
    if (m_search->text() != text)
        m_search->setText(text);
}

void DocumentListView::renderSelection()
{
    const QScopedValueRollback guard(m_isRendering, true);
    const QModelIndex selected = m_model->indexOf(m_store.selectedDocumentID()->value_or(QUuid()));
    m_list->selectionModel()->setCurrentIndex(selected, QItemSelectionModel::ClearAndSelect);
}

void DocumentListView::takeSelection()
{
    const QModelIndexList selected = m_list->selectionModel()->selectedIndexes();
    if (m_isRendering || selected.isEmpty())
        return;
    const QUuid id = m_model->document(selected.first()).id; // the list may change under it
    m_store.selectedDocumentID().set(id);
}

void DocumentListView::showMenu(const QModelIndex &index, const QPoint &globalPosition)
{
    const QUuid id = m_model->document(index).id;
    const auto withDocument = [this, id](auto act) {
        return [this, id, act] {
            if (const auto document = currentState(m_store, id))
                act(*document);
        };
    };
    auto *menu = new QMenu(this);
    menu->setObjectName(u"documentMenu"_s);
    menu->addAction(u"Rename…"_s, this, withDocument([this](const Document &document) { askForName(document); }));
    menu->addSeparator();
    QAction *remove = menu->addAction(
        u"Delete"_s, this, withDocument([this](const Document &document) { m_store.deleteDocument(document); }));
    setDestructive(*remove);
    m_list->showMenu(menu, index, globalPosition);
}

void DocumentListView::askForName(const Document &document)
{
    Alert::Content content;
    content.title = u"Rename Document"_s;
    content.field = Alert::Field{.text = document.title, .placeholder = u"Title"_s, .accessibleName = {}};
    content.action = u"Rename"_s;
    content.cancel = u"Cancel"_s;
    content.onAction = [&store = m_store, id = document.id](const QString &title) {
        if (const auto renamed = currentState(store, id))
            store.renameDocument(*renamed, title);
    };
    Alert::show(*this, content);
}
