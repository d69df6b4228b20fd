#include "kit/lists/RowList.h"

#include "kit/lists/ListMetrics.h"

#include <QContextMenuEvent>
#include <QHoverEvent>
#include <QMenu>
#include <QScopedValueRollback>

RowList::RowList(const QString &accessibleName, QWidget *parent) : QListView(parent)
{
    setAccessibleName(accessibleName);
    setFrameShape(NoFrame);
    viewport()->setBackgroundRole(QPalette::AlternateBase);
    viewport()->setAttribute(Qt::WA_Hover);
    setMouseTracking(true);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    connect(this, &QListView::clicked, this, &RowList::acted);
}

bool RowList::isHighlighted(const QModelIndex &index) const
{
    return index.isValid() && (index == m_hovered || index == m_menuRow);
}

RowState RowList::stateOf(const QStyleOptionViewItem &option, const QModelIndex &index)
{
    RowState state = RowState::of(option);
    if (const auto *list = qobject_cast<const RowList *>(option.widget))
        state.isHovered = list->isHighlighted(index);
    return state;
}

void RowList::repaintRow(const QModelIndex &index)
{
    // The line to the next row lies above that row's fill.
    viewport()->update(visualRect(index).adjusted(0, 0, 0, ListMetrics::rowGap));
}

void RowList::setHovered(const QModelIndex &index)
{
    if (index == m_hovered)
        return;
    repaintRow(m_hovered);
    m_hovered = index;
    repaintRow(m_hovered);
}

bool RowList::viewportEvent(QEvent *event)
{
    const bool isHandled = QListView::viewportEvent(event);
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverMove)
        setHovered(indexAt(static_cast<QHoverEvent *>(event)->position().toPoint()));
    else if (event->type() == QEvent::HoverLeave)
        setHovered({});
    return isHandled;
}

void RowList::scrollContentsBy(int dx, int dy)
{
    QListView::scrollContentsBy(dx, dy);
    if (viewport()->underMouse())
        setHovered(indexAt(viewport()->mapFromGlobal(QCursor::pos())));
}

/// A selection can be moved, but not taken away: the store would still have it.
QItemSelectionModel::SelectionFlags RowList::selectionCommand(const QModelIndex &index, const QEvent *event) const
{
    const auto command = QListView::selectionCommand(index, event);
    return command.testFlag(QItemSelectionModel::Deselect) ? QItemSelectionModel::NoUpdate : command;
}

void RowList::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        QListView::mousePressEvent(event);
}

void RowList::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (currentIndex().isValid())
            Q_EMIT acted(currentIndex());
        return;
    default:
        QListView::keyPressEvent(event);
    }
}

void RowList::contextMenuEvent(QContextMenuEvent *event)
{
    if (event->reason() != QContextMenuEvent::Keyboard) {
        const QModelIndex index = indexAt(event->pos());
        if (index.isValid())
            Q_EMIT menuWanted(index, event->globalPos());
        return;
    }
    const QModelIndex index = currentIndex();
    if (!index.isValid())
        return;
    scrollTo(index);
    Q_EMIT menuWanted(index, viewport()->mapToGlobal(visualRect(index).center()));
}

void RowList::showMenu(QMenu *menu, const QModelIndex &index, const QPoint &globalPosition)
{
    m_menuRow = index;
    repaintRow(m_menuRow);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(menu, &QMenu::aboutToHide, this, [this] {
        repaintRow(m_menuRow);
        m_menuRow = QModelIndex();
    });
    menu->popup(globalPosition);
}

void RowList::setCurrentInPlace(const QModelIndex &index, QItemSelectionModel::SelectionFlags command)
{
    const bool scrolls = hasAutoScroll();
    setAutoScroll(false);
    selectionModel()->setCurrentIndex(index, command);
    setAutoScroll(scrolls);
}

void RowList::reset()
{
    const int row = currentIndex().row();
    QListView::reset();
    if (model() != nullptr && row >= 0)
        setCurrentInPlace(model()->index(row, 0), QItemSelectionModel::NoUpdate);
}
