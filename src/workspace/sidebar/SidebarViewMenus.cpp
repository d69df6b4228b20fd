#include "workspace/sidebar/SidebarView.h"

#include "kit/lists/RowLine.h"
#include "kit/theme/Roles.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "library/LibraryStore.h"
#include "records/CodePalette.h"
#include "workspace/lists/StoreLookup.h"
#include "workspace/sidebar/SidebarList.h"
#include "workspace/sidebar/SidebarModel.h"

#include <QMenu>

using namespace Qt::StringLiterals;
using Kind = SidebarRow::Kind;

void SidebarView::showMenu(const QModelIndex &index, const QPoint &globalPosition)
{
    const SidebarRow &row = SidebarModel::rowAt(index);
    if (row.kind != Kind::project && row.kind != Kind::code)
        return;
    auto *menu = new QMenu(this);
    if (row.kind == Kind::project)
        fillProjectMenu(*menu, row.id);
    else
        fillCodeMenu(*menu, row.id);
    m_list->showMenu(menu, index, globalPosition);
}

void SidebarView::fillProjectMenu(QMenu &menu, const QUuid &id)
{
    menu.addAction(u"Rename Project…"_s, this, [this, id] {
        if (const auto project = StoreLookup::project(m_store, id))
            m_dialogs.askForName(*project);
    });
}

void SidebarView::fillCodeMenu(QMenu &menu, const QUuid &id)
{
    const std::optional<Code> shown = StoreLookup::code(m_store, id);
    if (!shown)
        return;
    const auto add = [this, id](QMenu &to, const QString &title, auto act) {
        return to.addAction(title, this, [this, id, act] {
            if (const auto code = StoreLookup::code(m_store, id))
                act(*code);
        });
    };
    add(menu, u"Rename"_s, [this](const Code &code) { openRenameField(code); });
    QMenu &colors = *menu.addMenu(u"Color"_s);
    for (const PaletteColor &color : CodePalette::colors()) {
        QAction *action =
            add(colors, color.name, [this, hex = color.hex](const Code &code) { m_store.setCodeColor(code, hex); });
        action->setIcon(Symbols::dot(Theme::codeColor(color.hex)));
        action->setCheckable(true);
        action->setChecked(color.hex.compare(shown->colorHex, Qt::CaseInsensitive) == 0);
    }
    menu.addSeparator();
    if (shown->parentID)
        add(menu, u"Move to Top Level"_s, [this](const Code &code) { m_store.moveCodeToTopLevel(code); });
    addOtherCodes(menu, u"Nest Under"_s, id, [this, id](const Code &parent) { m_store.nestCode(id, parent.id); });
    addOtherCodes(menu, u"Merge Into"_s, id, [this, id](const Code &target) {
        if (const auto code = StoreLookup::code(m_store, id))
            m_dialogs.askToMerge(*code, target);
    });
    menu.addSeparator();
    setDestructive(*add(menu, u"Delete…"_s, [this](const Code &code) { m_dialogs.askToDelete(code); }));
}

/// Thousands of entries take a while, so they are made when the submenu opens.
void SidebarView::addOtherCodes(
    QMenu &menu, const QString &title, const QUuid &codeID, const std::function<void(const Code &)> &act)
{
    QList<Code> others = m_store.codes().get();
    others.removeIf([&](const Code &code) { return code.id == codeID; });
    QMenu *submenu = menu.addMenu(title);
    submenu->menuAction()->setEnabled(!others.isEmpty());
    connect(submenu, &QMenu::aboutToShow, this, [this, submenu, others, act] {
        if (!submenu->isEmpty())
            return;
        for (const Code &other : others) {
            submenu->addAction(RowText::forMenu(other.name, submenu->font()), this, [this, act, id = other.id] {
                if (const auto code = StoreLookup::code(m_store, id))
                    act(*code);
            });
        }
    });
}
