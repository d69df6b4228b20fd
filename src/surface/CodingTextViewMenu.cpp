#include "surface/CodingTextView.h"

#include "kit/lists/RowLine.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMetaMethod>

#include <algorithm>

using namespace Qt::StringLiterals;

QMenu *CodingTextView::createContextMenu(qint64 position)
{
    // A click just after the last character of a passage still counts as inside it.
    const qint64 before = std::max<qint64>(position - 1, 0);
    auto *menu = new QMenu(this);
    menu->setObjectName(u"textContextMenu"_s);

    const TextRange selected = selection();
    const bool isOnSelection = selected.contains(position) || selected.contains(before);
    if (isOnSelection && isSignalConnected(QMetaMethod::fromSignal(&CodingTextView::addCodeRequested)))
        connect(menu->addAction(u"Add Code…"_s), &QAction::triggered, this, &CodingTextView::addCodeRequested);
    if (const TextHighlight *passage = m_marks.passages.firstAt(position, before)) {
        QAction *action = menu->addAction(u"Remove Code — %1"_s.arg(RowText::forMenu(passage->name, menu->font())));
        connect(action, &QAction::triggered, this,
            [this, codingID = passage->codingID] { Q_EMIT removeCodingRequested(codingID); });
    }
    if (!menu->isEmpty())
        menu->addSeparator();

    const auto addStandard = [&](const QString &title, QKeySequence::StandardKey key, void (QTextEdit::*run)()) {
        QAction *action = menu->addAction(title, this, run);
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetShortcut); // only shown here; the text handles the keys
        action->setShortcutVisibleInContextMenu(true);
        return action;
    };
    addStandard(u"Copy"_s, QKeySequence::Copy, &QTextEdit::copy)->setEnabled(selected.length > 0);
    addStandard(u"Select All"_s, QKeySequence::SelectAll, &QTextEdit::selectAll)->setEnabled(!m_text.isEmpty());
    return menu;
}

void CodingTextView::contextMenuEvent(QContextMenuEvent *event)
{
    const bool isByKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    QMenu *menu = createContextMenu(isByKeyboard ? selection().location : characterAt(event->pos()));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
    event->accept();
}
