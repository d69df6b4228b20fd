#include "workspace/Menus.h"

#include "kit/controls/Alert.h"
#include "library/LibraryStore.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QTextEdit>

using namespace Qt::StringLiterals;

namespace {

QAction *addEntry(QMenu &menu, const QString &title, const QKeySequence &shortcut, const std::function<void()> &act)
{
    QAction *action = menu.addAction(title);
    action->setShortcut(shortcut);
    action->setMenuRole(QAction::NoRole);
    QObject::connect(action, &QAction::triggered, &menu, act);
    return action;
}

/// What can be done in the field that has the focus.
struct Possible {
    bool undo = false;
    bool redo = false;
    bool cut = false;
    bool copy = false;
    bool paste = false;
    bool selectAll = false;
};

Possible possibleNow()
{
    const QMimeData *clipboard = QApplication::clipboard()->mimeData();
    const bool hasPaste = clipboard != nullptr && clipboard->hasText();
    QWidget *focus = QApplication::focusWidget();
    if (const auto *line = qobject_cast<QLineEdit *>(focus)) {
        const bool mayChange = !line->isReadOnly();
        return {line->isUndoAvailable(), line->isRedoAvailable(), line->hasSelectedText() && mayChange,
            line->hasSelectedText(), hasPaste && mayChange, !line->text().isEmpty()};
    }
    if (const auto *text = qobject_cast<QTextEdit *>(focus)) {
        const bool hasSelection = text->textCursor().hasSelection();
        const bool mayChange = !text->isReadOnly();
        return {text->document()->isUndoAvailable(), text->document()->isRedoAvailable(), hasSelection && mayChange,
            hasSelection, hasPaste && mayChange, true};
    }
    return {};
}

/// `act` is called with the field that has the focus, a QLineEdit or a QTextEdit.
template <typename Act>
void addEditEntry(QMenu &menu, const QString &title, QKeySequence::StandardKey key, bool Possible::*isPossible, Act act)
{
    QAction *action = addEntry(menu, title, key, [act] {
        QWidget *focus = QApplication::focusWidget();
        if (auto *line = qobject_cast<QLineEdit *>(focus))
            act(*line);
        else if (auto *text = qobject_cast<QTextEdit *>(focus))
            act(*text);
    });
    QObject::connect(&menu, &QMenu::aboutToShow, action, [=] { action->setEnabled(possibleNow().*isPossible); });
    // A disabled entry's shortcut is dead, and nothing tells when it becomes possible while the menu is closed.
    QObject::connect(&menu, &QMenu::aboutToHide, action, [action] { action->setEnabled(true); });
}

void addEditMenu(QMenuBar &bar, const std::function<void()> &openFindBar)
{
    QMenu &menu = *bar.addMenu(u"&Edit"_s);
    addEditEntry(menu, u"Undo"_s, QKeySequence::Undo, &Possible::undo, [](auto &field) { field.undo(); });
    addEditEntry(menu, u"Redo"_s, QKeySequence::Redo, &Possible::redo, [](auto &field) { field.redo(); });
    menu.addSeparator();
    addEditEntry(menu, u"Cut"_s, QKeySequence::Cut, &Possible::cut, [](auto &field) { field.cut(); });
    addEditEntry(menu, u"Copy"_s, QKeySequence::Copy, &Possible::copy, [](auto &field) { field.copy(); });
    addEditEntry(menu, u"Paste"_s, QKeySequence::Paste, &Possible::paste, [](auto &field) { field.paste(); });
    addEditEntry(
        menu, u"Select All"_s, QKeySequence::SelectAll, &Possible::selectAll, [](auto &field) { field.selectAll(); });
    menu.addSeparator();
    addEntry(menu, u"Find…"_s, QKeySequence(Qt::CTRL | Qt::Key_F), openFindBar);
}

void showAbout(QMainWindow &window)
{
    Alert::show(window,
        {.title = u"Vorn %1"_s.arg(QApplication::applicationVersion()),
            .message = u"A workbench for qualitative data analysis. Everything stays on this computer."_s,
            .action = u"OK"_s});
}

void addProgramMenu(QMenuBar &bar, QMainWindow &window)
{
    QMenu *menu = bar.addMenu(u"&Vorn"_s);
    addEntry(*menu, u"About Vorn"_s, {}, [&window] { showAbout(window); });
    menu->addSeparator();
    addEntry(*menu, u"Quit"_s, QKeySequence(Qt::CTRL | Qt::Key_Q), [&window] { window.close(); });
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

void Menus::build(QMainWindow &window, LibraryStore &store, const std::function<void()> &openFindBar)
{
    QMenuBar &bar = *window.menuBar();
    addProgramMenu(bar, window);
    addEditMenu(bar, openFindBar);
    addDocumentsMenu(bar, store);
    addAnalyzeMenu(bar, store);
}
