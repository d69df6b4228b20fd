#include "workspace/lists/DocumentListView.h"

#include "kit/controls/Alert.h"
#include "kit/controls/ElidedLabel.h"
#include "kit/controls/EmptyState.h"
#include "kit/controls/LongText.h"
#include "kit/controls/SearchField.h"
#include "kit/lists/RowDelegate.h"
#include "kit/lists/RowList.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Roles.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "library/LibraryStore.h"
#include "platform/LocaleText.h"
#include "workspace/lists/StoreLookup.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStackedWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 34;
constexpr qsizetype maxUnitsInTitle = 60;

enum Role {
    factsRole = Qt::UserRole + 1, ///< QString: words and day
    symbolRole, ///< QString: the name of the icon
};

QString symbolFor(const QString &sourceKind)
{
    if (sourceKind == u"docx" || sourceKind == u"pdf" || sourceKind == u"rtf")
        return u"doc.richtext"_s;
    return sourceKind == u"md" || sourceKind == u"markdown" ? u"text.alignleft"_s : u"doc.text"_s;
}

/// "1,112 words · Nov 24"
QString factsOf(const Document &document)
{
    return u"%1 words · %2"_s.arg(LocaleText::number(document.wordCount), LocaleText::monthAndDay(document.addedAt));
}

QVariant describe(const Document &document, int role)
{
    switch (role) {
    case Qt::DisplayRole:
        return document.title;
    case Qt::AccessibleTextRole:
        return u"%1, %2"_s.arg(document.title, factsOf(document));
    case factsRole:
        return factsOf(document);
    case symbolRole:
        return symbolFor(document.sourceKind);
    default:
        return {};
    }
}

/// Paints an icon for the document's kind, its title, and below them its facts.
class DocumentRows final : public RowDelegate {
public:
    explicit DocumentRows(QObject *parent)
        : RowDelegate({.height = std::max(minHeight, textHeight()),
                          .inset = ListMetrics::rowInset,
                          .radius = Metrics::listRowRadius,
                          .gapAbove = ListMetrics::rowGap},
            parent)
    {
    }

protected:
    bool fill(RowLine &row, const QModelIndex &index) const override
    {
        constexpr int iconSide = 11;
        constexpr int iconInset = 2;
        constexpr int iconGap = 9;
        const ThemeColors &colors = Theme::colors();
        row.skip(ListMetrics::contentInset);
        row.skipAtEnd(ListMetrics::contentInset);
        const int top = paddingAbove + (row.rest().height() - m_textHeight) / 2;
        RowLine title = row.line(top, heightOf(m_titleFont));
        title.skip(iconInset);
        title.symbol(
            index.data(symbolRole).toString(), colors.accentForeground, iconSide, iconGap, Symbols::semiboldStroke);
        RowLine facts = row.line(top + title.rest().height() + lineGap, heightOf(m_factsFont));
        facts.skip(title.rest().left() - row.rest().left());
        facts.text(index.data(factsRole).toString(), m_factsFont, colors.secondary);
        return title.text(index.data().toString(), m_titleFont, colors.text);
    }

private:
    static constexpr int minHeight = 49;
    static constexpr int paddingAbove = 8;
    static constexpr int paddingBelow = 7;
    static constexpr int lineGap = 4;

    [[nodiscard]] static int heightOf(const QFont &font) { return QFontMetrics(font).height(); }
    [[nodiscard]] static int textHeight()
    {
        return paddingAbove + heightOf(Fonts::bodyMedium()) + lineGap + heightOf(Fonts::caption()) + paddingBelow;
    }

    QFont m_titleFont = Fonts::bodyMedium();
    QFont m_factsFont = Fonts::caption();
    int m_textHeight = textHeight();
};

} // namespace

DocumentListView::DocumentListView(LibraryStore &store, QWidget *parent)
    : ListColumn(parent),
      m_store(store),
      m_model(new ListModel<QList<Document>>(describe, this))
{
    ElidedLabel *title = addTitle(u"Documents"_s);
    title->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    addSearchField();
    addPages();
    connect(&m_store.documents(), &Notifier::changed, this, &DocumentListView::invalidate);
    connect(&m_store.searchText(), &Notifier::changed, this, &DocumentListView::invalidate);
    connect(&m_store.searchText(), &Notifier::changed, this, &DocumentListView::showFirstHits);
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
    m_list->setItemDelegate(new DocumentRows(m_list));
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
    m_model->setItems(m_store.documents()->isEmpty() ? QList<Document>() : m_store.visibleDocuments());
    m_noResults->setTitle(
        u"No Results for “%1”"_s.arg(LongText::shortened(m_store.searchText().get(), maxUnitsInTitle)));
    m_pages->setCurrentWidget(pageToShow());
    m_list->setCurrentInPlace(selectedIndex(), QItemSelectionModel::ClearAndSelect);
}

/// Invalid for a document that isn't listed.
QModelIndex DocumentListView::selectedIndex() const
{
    const auto found =
        std::ranges::find(m_model->items(), m_store.selectedDocumentID()->value_or(QUuid()), &Document::id);
    return m_model->index(int(found - m_model->items().begin()));
}

void DocumentListView::showFirstHits()
{
    if (const QModelIndex selected = selectedIndex(); selected.isValid())
        m_list->scrollTo(selected);
    else
        m_list->scrollToTop();
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
    m_list->selectionModel()->setCurrentIndex(selectedIndex(), QItemSelectionModel::ClearAndSelect);
}

void DocumentListView::takeSelection()
{
    const QModelIndexList selected = m_list->selectionModel()->selectedIndexes();
    if (m_isRendering || selected.isEmpty())
        return;
    m_store.selectedDocumentID().set(m_model->item(selected.first()).id);
}

void DocumentListView::showMenu(const QModelIndex &index, const QPoint &globalPosition)
{
    const QUuid id = m_model->item(index).id;
    const auto withDocument = [this, id](auto act) {
        return [this, id, act] {
            if (const auto document = StoreLookup::document(m_store, id))
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
    content.field = Alert::Field{.text = document.title, .placeholder = u"Title"_s};
    content.action = u"Rename"_s;
    content.cancel = u"Cancel"_s;
    content.onAction = [&store = m_store, id = document.id](const QString &title) {
        if (const auto renamed = StoreLookup::document(store, id))
            store.renameDocument(*renamed, title);
    };
    Alert::show(*this, content);
}
