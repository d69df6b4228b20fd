#include "workspace/Menus.h"

#include "kit/controls/Alert.h"
#include "library/LibraryStore.h"
#include "workspace/EditCommands.h"
#include "workspace/RootView.h"

#include <QAction>
#include <QApplication>
#include <QMenuBar>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

/// One with that title on the menu, acting when it is chosen.
void addEntry(QMenu &menu, const QString &title, const QKeySequence &shortcut, const std::function<void()> &act)
{
    QAction *action = menu.addAction(title);
    action->setShortcut(shortcut);
    action->setMenuRole(QAction::NoRole);
    QObject::connect(action, &QAction::triggered, &menu, act);
}

void showAbout(RootView &window)
{
    Alert::show(window,
        {.title = u"Vorn %1"_s.arg(QApplication::applicationVersion()),
            .message = u"A workbench for qualitative data analysis. Everything stays on this computer."_s,
            .field = {},
            .action = u"OK"_s,
            .cancel = {},
            .onAction = {},
            .onCancel = {}});
}

void addProgramMenu(QMenuBar &bar, RootView &window)
{
    QMenu *menu = bar.addMenu(u"&Vorn"_s);
    addEntry(*menu, u"About Vorn"_s, {}, [&window] { showAbout(window); });
    menu->addSeparator();
    addEntry(*menu, u"Quit"_s, QKeySequence(Qt::CTRL | Qt::Key_Q), [&window] { window.close(); });
}

void addEditMenu(QMenuBar &bar, RootView &window)
{
    QMenu *menu = bar.addMenu(u"&Edit"_s);
    EditCommands::addTo(*menu);
    menu->addSeparator();
    addEntry(*menu, u"Find…"_s, QKeySequence(Qt::CTRL | Qt::Key_F), [&window] { window.openFindBar(); });
}

void addDocumentsMenu(QMenuBar &bar, LibraryStore &store)
{
    QMenu *menu = bar.addMenu(u"&Documents"_s);
    addEntry(
        *menu, u"Import Documents…"_s, QKeySequence(Qt::CTRL | Qt::Key_O), [&store] { store.presentImportPanel(); });
    addEntry(*menu, u"Paste New Document…"_s, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_V),
        [&store] { store.showPasteSheet().set(true); });
    menu->addSeparator();
    addEntry(*menu, u"Export Coded Excerpts…"_s, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E),
        [&store] { store.showExportSheet().set(true); });
    menu->addSeparator();
    addEntry(*menu, u"Import REFI-QDA Project…"_s, {}, [&store] { store.presentImportQdpxPanel(); });
    addEntry(*menu, u"Export REFI-QDA Project…"_s, {}, [&store] { store.presentExportQdpxPanel(); });
    addEntry(*menu, u"Export Codebook (.qdc)…"_s, {}, [&store] { store.presentExportQdcPanel(); });
}

void addAnalyzeMenu(QMenuBar &bar, LibraryStore &store)
{
    QMenu *menu = bar.addMenu(u"&Analyze"_s);
    addEntry(*menu, u"Compound Query…"_s, {}, [&store] { store.showQuerySheet().set(true); });
    addEntry(*menu, u"Word Frequency…"_s, {}, [&store] { store.showWordFreqSheet().set(true); });
}

} // namespace

void Menus::build(RootView &window, LibraryStore &store)
{
    QMenuBar &bar = *window.menuBar();
    addProgramMenu(bar, window);
    addEditMenu(bar, window);
    addDocumentsMenu(bar, store);
    addAnalyzeMenu(bar, store);
}
