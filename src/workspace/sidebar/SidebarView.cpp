#include "workspace/sidebar/SidebarView.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/lists/RowLine.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Theme.h"
#include "library/LibraryStore.h"
#include "platform/ThisComputer.h"
#include "workspace/lists/StoreLookup.h"
#include "workspace/sidebar/InlineField.h"
#include "workspace/sidebar/SidebarDelegate.h"
#include "workspace/sidebar/SidebarList.h"
#include "workspace/sidebar/SidebarMetrics.h"
#include "workspace/sidebar/SidebarModel.h"

#include <QFontMetrics>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using Kind = SidebarRow::Kind;

namespace {

constexpr int defaultHeight = 600;

/// The line at the sidebar's bottom that says where everything is kept.
class SidebarFooter final : public QLabel {
public:
    explicit SidebarFooter(QWidget *parent) : QLabel(u"Offline · stored on "_s + thisComputer(), parent)
    {
        setFont(Fonts::caption());
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        constexpr int padding = 10; // above and below
        const QFontMetrics metrics(font());
        const int textWidth = metrics.horizontalAdvance(text()) + 1; // rounded up
        return {textWidth + lockSide + spacing, metrics.height() + 2 * padding};
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const QFontMetrics metrics(font());
        const int room = std::max(0, width() - lockSide - spacing);
        const int textWidth = std::min(room, metrics.horizontalAdvance(text()) + 1); // rounded up
        QRect place(0, 0, lockSide + spacing + textWidth, height());
        place.moveLeft((width() - place.width()) / 2);
        QPainter painter(this);
        RowLine line(&painter, place, layoutDirection());
        line.symbol(u"lock.fill"_s, Theme::colors().tertiary, lockSide, spacing);
        line.text(text(), font(), Theme::colors().tertiary);
    }

private:
    static constexpr int lockSide = 9;
    static constexpr int spacing = 6;
};

} // namespace

SidebarView::SidebarView(LibraryStore &store, QWidget *parent)
    : QWidget(parent),
      m_store(store),
      m_model(new SidebarModel(this)),
      m_list(new SidebarList(u"Projects and codes"_s, this)),
      m_newCodeField(new InlineField(u"New code name"_s, *m_list, m_list->viewport())),
      m_renameField(new InlineField(u"Name"_s, *m_list, m_list->viewport())),
      m_dialogs(store, *this)
{
    setMinimumWidth(SidebarMetrics::minWidth);
    setMaximumWidth(SidebarMetrics::maxWidth);
    m_list->setObjectName(u"sidebarList"_s);
    m_list->setModel(m_model);
    m_list->setItemDelegate(new SidebarDelegate(m_list));
    m_newCodeField->setObjectName(u"newCodeField"_s);
    m_renameField->setObjectName(u"renameField"_s);
    buildLayout();
    connectList();
    connectFields();
    watchStore();
    render();
    followNewCode();
    followSelection();
}

QSize SidebarView::sizeHint() const
{
    return {SidebarMetrics::defaultWidth, defaultHeight};
}

void SidebarView::buildLayout()
{
    auto *head = new QHBoxLayout;
    head->setContentsMargins(SidebarMetrics::contentLine, 0, SidebarMetrics::contentLine, 0);
    head->addStrut(Metrics::columnHeadHeight);
    head->addWidget(new ElidedLabel(u"Vorn"_s, Fonts::columnTitle(), Symbols::Tint::text, this));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addLayout(head);
    column->addWidget(m_list, 1);
    column->addWidget(new SidebarFooter(this));
}

void SidebarView::paintEvent(QPaintEvent *event)
{
    QPainter(this).fillRect(event->rect(), Theme::colors().sidebar);
}

void SidebarView::watchStore()
{
    const std::initializer_list<const Notifier *> shown{
        &m_store.projects(), &m_store.projectDocCounts(), &m_store.codes(), &m_store.codeCounts()};
    for (const Notifier *value : shown)
        connect(value, &Notifier::changed, this, &SidebarView::render);
    connect(&m_store.codes(), &Notifier::changed, this, &SidebarView::followNewCode);
    connect(&m_store.sidebarSelection(), &Notifier::changed, this, &SidebarView::followSelection);
}

void SidebarView::connectList()
{
    connect(m_list, &SidebarList::acted, this, &SidebarView::act);
    connect(m_list, &SidebarList::menuWanted, this, &SidebarView::showMenu);
    connect(m_list, &SidebarList::rowsMoved, this, &SidebarView::placeFields);
    connect(m_model, &SidebarModel::codeDropped, this,
        [this](const QUuid &dropped, const QUuid &target) { m_store.nestCode(dropped, target); });
}

void SidebarView::connectFields()
{
    connect(m_newCodeField, &InlineField::committed, this, &SidebarView::commitNewCode);
    connect(m_newCodeField, &InlineField::cancelled, this, &SidebarView::closeNewCodeField);
    connect(m_renameField, &InlineField::committed, this, &SidebarView::commitRename);
    connect(m_renameField, &InlineField::cancelled, this, &SidebarView::closeRenameField);
}

void SidebarView::render()
{
    m_list->keepScrolled([this] {
        const QSignalBlocker blocker(m_list); // resetting the model would hide the fields for a moment
        const QModelIndex current = m_list->currentIndex();
        const SidebarRow place = current.isValid() ? SidebarModel::rowAt(current) : SidebarRow();
        m_model->setItems(
            sidebarRows(m_store, {.isAddingCode = m_newCodeField->isOpen(), .renamingCodeID = m_renamingCodeID}));
        if (const QModelIndex moved = m_model->find(place.kind, place.id); current.isValid() && moved.isValid())
            m_list->selectionModel()->setCurrentIndex(moved, QItemSelectionModel::NoUpdate);
        m_list->selectionModel()->select(selectedIndex(), QItemSelectionModel::ClearAndSelect);
    });
    placeFields();
}

QModelIndex SidebarView::selectedIndex() const
{
    const auto selection = m_store.sidebarSelection().get();
    if (!selection)
        return {};
    if (const auto *project = std::get_if<ProjectSelection>(&*selection))
        return m_model->find(Kind::project, project->projectID);
    if (const auto *code = std::get_if<CodeSelection>(&*selection))
        return m_model->find(Kind::code, code->codeID);
    return {};
}

void SidebarView::followSelection()
{
    const QModelIndex selected = selectedIndex();
    m_list->selectionModel()->select(selected, QItemSelectionModel::ClearAndSelect);
    if (selected.isValid())
        m_list->selectionModel()->setCurrentIndex(selected, QItemSelectionModel::NoUpdate);
}

/// If there is just one code more than before, it has been made here or elsewhere in the window: scrolls to it, and to
/// the line below it that makes the next one.
void SidebarView::followNewCode()
{
    const QList<Code> &codes = m_store.codes().get(); // oldest first
    const qsizetype count = codes.size();
    const QUuid newest = count > 0 ? codes.last().id : QUuid();
    const QUuid before = std::exchange(m_newestCode, newest);
    if (count > 1 && newest != before && codes.at(count - 2).id == before) {
        m_list->scrollTo(m_model->find(Kind::newCode, {}));
        m_list->scrollTo(m_model->find(Kind::code, newest));
    }
}

void SidebarView::act(const QModelIndex &index)
{
    const SidebarRow row = SidebarModel::rowAt(index); // a copy, since the rows change meanwhile
    switch (row.kind) {
    case Kind::project:
        m_store.selectProject(row.id);
        return;
    case Kind::newProject:
        m_dialogs.askForNewProject();
        return;
    case Kind::code:
        m_store.sidebarSelection().set(CodeSelection{row.id});
        return;
    case Kind::newCode:
        openNewCodeField();
        return;
    case Kind::head:
    case Kind::hint:
        return;
    }
}
