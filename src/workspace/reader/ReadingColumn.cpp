#include "workspace/reader/ReadingColumn.h"

#include "surface/ReaderMetrics.h"

#include <QEvent>

ReadingColumn::ReadingColumn(QWidget &parent, int outdent) : QWidget(&parent), m_outdent(outdent)
{
    parent.installEventFilter(this);
    centre();
}

QSize ReadingColumn::minimumSizeHint() const
{
    const QMargins margins = contentsMargins();
    const int minMargins = 2 * ReaderMetrics::minSideInset - m_outdent;
    return QWidget::minimumSizeHint() - QSize(margins.left() + margins.right() - minMargins, 0);
}

bool ReadingColumn::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        centre();
    return QWidget::eventFilter(watched, event);
}

void ReadingColumn::centre()
{
    const int side = ReaderMetrics::sideInset(parentWidget()->width());
    setContentsMargins(side - m_outdent, 0, side, 0);
}
