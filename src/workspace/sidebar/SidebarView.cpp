#include "workspace/sidebar/SidebarView.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"
#include "library/LibraryStore.h"
#include "workspace/sidebar/CodeRowMenu.h"
#include "workspace/sidebar/InlineField.h"
#include "workspace/sidebar/SidebarDelegate.h"
#include "workspace/sidebar/SidebarFooter.h"
#include "workspace/sidebar/SidebarList.h"
#include "workspace/sidebar/SidebarMetrics.h"
#include "workspace/sidebar/SidebarModel.h"
#include "workspace/sidebar/StoreLookup.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using Kind = SidebarRow::Kind;

namespace {

constexpr int defaultHeight = 600;

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
        const QSignalBlocker blocker(m_list); // a line that moves is missing for a moment, and its field would close
        const QModelIndex before = m_list->currentIndex();
        const SidebarRow place = before.isValid() ? SidebarModel::rowAt(before) : SidebarRow();
        m_model->show(
            sidebarRows(m_store, {.isAddingCode = m_newCodeField->isOpen(), .renamingCodeID = m_renamingCodeID}));
        if (const QModelIndex after = m_model->find(place); before.isValid() && after.isValid())
            m_list->selectionModel()->setCurrentIndex(after, QItemSelectionModel::NoUpdate);
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

void SidebarView::act(const QModelIndex &index)
{
    const SidebarRow row = SidebarModel::rowAt(index); // a copy: the rows change under it
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

void SidebarView::showMenu(const QModelIndex &index, const QPoint &globalPosition)
{
    if (SidebarModel::rowAt(index).kind == Kind::project)
        showProjectMenu(index, globalPosition);
    else if (SidebarModel::rowAt(index).kind == Kind::code)
        showCodeMenu(index, globalPosition);
}

void SidebarView::showProjectMenu(const QModelIndex &index, const QPoint &globalPosition)
{
    auto *menu = new QMenu(this);
    menu->addAction(u"Rename Project…"_s, this, [this, id = SidebarModel::rowAt(index).id] {
        if (const auto project = StoreLookup::project(m_store, id))
            m_dialogs.askForName(*project);
    });
    m_list->showMenu(menu, index, globalPosition);
}

void SidebarView::showCodeMenu(const QModelIndex &index, const QPoint &globalPosition)
{
    const QUuid id = SidebarModel::rowAt(index).id;
    const auto made = StoreLookup::code(m_store, id);
    if (!made)
        return;
    const auto withCode = [this, id](auto act) {
        return [this, id, act](const auto &...picked) {
            if (const auto code = StoreLookup::code(m_store, id))
                act(*code, picked...);
        };
    };
    auto *menu = new CodeRowMenu(*made, m_store.codes().get(), this);
    connect(menu, &CodeRowMenu::renamePicked, this, withCode([this](const Code &code) { openRenameField(code); }));
    connect(menu, &CodeRowMenu::colorPicked, this,
        withCode([this](const Code &code, const QString &hex) { m_store.setCodeColor(code, hex); }));
    connect(menu, &CodeRowMenu::topLevelPicked, this,
        withCode([this](const Code &code) { m_store.moveCodeToTopLevel(code); }));
    connect(
        menu, &CodeRowMenu::parentPicked, this, [this, id](const QUuid &parentID) { m_store.nestCode(id, parentID); });
    connect(menu, &CodeRowMenu::mergeTargetPicked, this, withCode([this](const Code &code, const QUuid &targetID) {
        if (const auto target = StoreLookup::code(m_store, targetID))
            m_dialogs.askToMerge(code, *target);
    }));
    connect(
        menu, &CodeRowMenu::deletePicked, this, withCode([this](const Code &code) { m_dialogs.askToDelete(code); }));
    m_list->showMenu(menu, index, globalPosition);
}
