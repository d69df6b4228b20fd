#include "kit/lists/RowList.h"

#include "kit/theme/FocusRing.h"
#include "kit/theme/Metrics.h"

#include <QContextMenuEvent>
#include <QHoverEvent>
#include <QMenu>

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
    // The line that separates it from the next row is above that row's ground.
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

/// After scrolling or a reset another row may be under the mouse.
void RowList::hoverAtMouse()
{
    if (viewport()->underMouse())
        setHovered(indexAt(viewport()->mapFromGlobal(QCursor::pos())));
}

void RowList::scrollContentsBy(int dx, int dy)
{
    QListView::scrollContentsBy(dx, dy);
    hoverAtMouse();
}

/// A click moves the selection, but never takes it away: the store would still have it.
QItemSelectionModel::SelectionFlags RowList::selectionCommand(const QModelIndex &index, const QEvent *event) const
{
    const auto command = QListView::selectionCommand(index, event);
    const bool takesAway = command.testFlag(QItemSelectionModel::Deselect) || !index.isValid();
    return takesAway ? QItemSelectionModel::NoUpdate : command;
}

/// Keys skip rows that can't be current: Home may lead to a heading.
QModelIndex RowList::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const QModelIndex wanted = QListView::moveCursor(action, modifiers);
    for (const int step : {1, -1}) {
        QModelIndex index = wanted;
        while (index.isValid() && !index.flags().testFlag(Qt::ItemIsEnabled))
            index = index.siblingAtRow(index.row() + step);
        if (index.isValid())
            return index;
    }
    return wanted;
}

void RowList::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        QListView::mousePressEvent(event);
}

/// With a button pressed, QListView would select what the mouse passes.
void RowList::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() == Qt::NoButton)
        QListView::mouseMoveEvent(event);
}

void RowList::keyPressEvent(QKeyEvent *event)
{
    FocusRing::noteKeyboard();
    viewport()->update(visualRect(currentIndex()));
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

void RowList::startAnew()
{
    setCurrentInPlace({}, QItemSelectionModel::NoUpdate);
    scrollToTop();
}

void RowList::reset()
{
    const int row = currentIndex().row();
    QListView::reset();
    if (model() != nullptr && row >= 0)
        setCurrentInPlace(model()->index(row, 0), QItemSelectionModel::NoUpdate);
    hoverAtMouse();
}
