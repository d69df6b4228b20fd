#include "workspace/EditCommands.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTextEdit>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

struct Command {
    QString title;
    QKeySequence::StandardKey key;
    std::function<bool(const QLineEdit &)> lineCan;
    std::function<bool(const QTextEdit &)> textCan;
    std::function<void(QLineEdit &)> doInLine;
    std::function<void(QTextEdit &)> doInText;
};

bool hasText(const QClipboard &clipboard)
{
    return clipboard.mimeData() != nullptr && clipboard.mimeData()->hasText();
}

QList<QList<Command>> groups()
{
    const auto canPaste = [](const auto &field) { return !field.isReadOnly() && hasText(*QApplication::clipboard()); };
    return {
        {{u"Undo"_s, QKeySequence::Undo, [](const QLineEdit &field) { return field.isUndoAvailable(); },
             [](const QTextEdit &text) { return text.document()->isUndoAvailable(); },
             [](QLineEdit &field) { field.undo(); }, [](QTextEdit &text) { text.undo(); }},
            {u"Redo"_s, QKeySequence::Redo, [](const QLineEdit &field) { return field.isRedoAvailable(); },
                [](const QTextEdit &text) { return text.document()->isRedoAvailable(); },
                [](QLineEdit &field) { field.redo(); }, [](QTextEdit &text) { text.redo(); }}},
        {{u"Cut"_s, QKeySequence::Cut,
             [](const QLineEdit &field) { return field.hasSelectedText() && !field.isReadOnly(); },
             [](const QTextEdit &text) { return text.textCursor().hasSelection() && !text.isReadOnly(); },
             [](QLineEdit &field) { field.cut(); }, [](QTextEdit &text) { text.cut(); }},
            {u"Copy"_s, QKeySequence::Copy, [](const QLineEdit &field) { return field.hasSelectedText(); },
                [](const QTextEdit &text) { return text.textCursor().hasSelection(); },
                [](QLineEdit &field) { field.copy(); }, [](QTextEdit &text) { text.copy(); }},
            {u"Paste"_s, QKeySequence::Paste, canPaste, canPaste, [](QLineEdit &field) { field.paste(); },
                [](QTextEdit &text) { text.paste(); }},
            {u"Select All"_s, QKeySequence::SelectAll, [](const QLineEdit &field) { return !field.text().isEmpty(); },
                [](const QTextEdit &) { return true; }, [](QLineEdit &field) { field.selectAll(); },
                [](QTextEdit &text) { text.selectAll(); }}},
    };
}

bool isPossible(const Command &command)
{
    QWidget *focus = QApplication::focusWidget();
    if (const auto *field = qobject_cast<QLineEdit *>(focus))
        return command.lineCan(*field);
    if (const auto *text = qobject_cast<QTextEdit *>(focus))
        return command.textCan(*text);
    return false;
}

void carryOut(const Command &command)
{
    QWidget *focus = QApplication::focusWidget();
    if (auto *field = qobject_cast<QLineEdit *>(focus))
        command.doInLine(*field);
    else if (auto *text = qobject_cast<QTextEdit *>(focus))
        command.doInText(*text);
}

} // namespace

void EditCommands::addTo(QMenu &menu)
{
    for (const QList<Command> &group : groups()) {
        if (!menu.isEmpty())
            menu.addSeparator();
        for (const Command &command : group) {
            QAction *action = menu.addAction(command.title);
            action->setShortcut(command.key);
            QObject::connect(action, &QAction::triggered, &menu, [command] { carryOut(command); });
            QObject::connect(
                &menu, &QMenu::aboutToShow, action, [command, action] { action->setEnabled(isPossible(command)); });
            // While the menu is closed its shortcuts stay alive: what can be done changes without being told.
            QObject::connect(&menu, &QMenu::aboutToHide, action, [action] { action->setEnabled(true); });
        }
    }
}
