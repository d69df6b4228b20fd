#include "workspace/reader/ReadingColumn.h"

#include <QEvent>

#include <algorithm>

ReadingColumn::ReadingColumn(QWidget *parent, int outdent) : QWidget(parent), m_outdent(outdent)
{
    if (parent != nullptr)
        parent->installEventFilter(this);
    centre();
}

QSize ReadingColumn::minimumSizeHint() const
{
    const QMargins margins = contentsMargins();
    const int least = 2 * sideMargin - m_outdent;
    return QWidget::minimumSizeHint() - QSize(margins.left() + margins.right() - least, 0);
}

bool ReadingColumn::event(QEvent *event)
{
    if (event->type() == QEvent::ParentChange && parentWidget() != nullptr)
        parentWidget()->installEventFilter(this);
    return QWidget::event(event);
}

bool ReadingColumn::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        centre();
    return QWidget::eventFilter(watched, event);
}

void ReadingColumn::centre()
{
    if (parentWidget() == nullptr)
        return;
    const int side = std::max(sideMargin, (parentWidget()->width() - textWidth) / 2);
    setContentsMargins(side - m_outdent, 0, side, 0);
}
