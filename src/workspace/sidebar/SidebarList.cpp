#include "workspace/sidebar/SidebarList.h"

#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"
#include "workspace/sidebar/DragPicture.h"

#include <QApplication>
#include <QDrag>
#include <QDragMoveEvent>
#include <QMimeData>
#include <QPainter>
#include <QResizeEvent>

namespace {

/// While it lives, nothing in the program but `place` takes a drop: a memo or a field would take a code for text.
class OnlyPlaceToDrop final : public QObject {
public:
    OnlyPlaceToDrop(const QWidget &place, QObject &drag) : QObject(&drag), m_place(place)
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool isDrop =
            event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove || event->type() == QEvent::Drop;
        if (!isDrop || !watched->isWidgetType() || watched == &m_place)
            return false;
        event->ignore();
        return true;
    }

private:
    const QWidget &m_place;
};

} // namespace

SidebarList::SidebarList(const QString &accessibleName, QWidget *parent) : RowList(accessibleName, parent)
{
    viewport()->setAutoFillBackground(false);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent); // painted whole below, so it can be scrolled as a picture
    setAcceptDrops(true);
    setDropIndicatorShown(false);
}

void SidebarList::keepScrolled(const std::function<void()> &change)
{
    const bool scrolls = hasAutoScroll();
    setAutoScroll(false);
    change();
    executeDelayedItemsLayout(); // painting before it would leave the list empty for a moment
    setAutoScroll(scrolls);
}

QItemSelectionModel::SelectionFlags SidebarList::selectionCommand(const QModelIndex &, const QEvent *) const
{
    return QItemSelectionModel::NoUpdate;
}

void SidebarList::paintEvent(QPaintEvent *event)
{
    QPainter(viewport()).fillRect(event->rect(), Theme::colors().sidebar);
    RowList::paintEvent(event);
}

/// Lines of text wrap by the width, of which the list itself takes no notice.
void SidebarList::resizeEvent(QResizeEvent *event)
{
    RowList::resizeEvent(event);
    if (state() == NoState && event->size().width() != event->oldSize().width())
        doItemsLayout();
}

void SidebarList::updateGeometries()
{
    RowList::updateGeometries();
    Q_EMIT rowsMoved();
}

void SidebarList::mousePressEvent(QMouseEvent *event)
{
    m_pressedAt = event->position().toPoint();
    m_pressed = event->button() == Qt::LeftButton ? indexAt(m_pressedAt) : QModelIndex();
    RowList::mousePressEvent(event);
}

/// The list's own way drags only what is selected.
void SidebarList::mouseMoveEvent(QMouseEvent *event)
{
    if (!event->buttons().testFlag(Qt::LeftButton)) {
        RowList::mouseMoveEvent(event);
        return;
    }
    const int distance = (event->position().toPoint() - m_pressedAt).manhattanLength();
    const QModelIndex index = m_pressed;
    if (distance < QApplication::startDragDistance() || !index.flags().testFlag(Qt::ItemIsDragEnabled))
        return;
    m_pressed = QModelIndex();
    drag(index);
}

void SidebarList::drag(const QModelIndex &index)
{
    const QRect row = visualRect(index);
    auto *drag = new QDrag(this); // deleted by Qt when it is over
    drag->setMimeData(model()->mimeData({index}));
    new OnlyPlaceToDrop(*viewport(), *drag);
    const DragPicture picture = DragPicture::of(*this, index);
    drag->setPixmap(picture.pixmap);
    drag->setHotSpot(picture.origin + m_pressedAt - row.topLeft());
    drag->exec(Qt::CopyAction); // a move would have the list take away its selected row
}

void SidebarList::dragMoveEvent(QDragMoveEvent *event)
{
    RowList::dragMoveEvent(event); // scrolls near the edges
    const QModelIndex index = indexAt(event->position().toPoint());
    const bool isWelcome = model()->canDropMimeData(event->mimeData(), event->dropAction(), -1, -1, index);
    setDropTarget(isWelcome ? index : QModelIndex());
    if (isWelcome)
        event->acceptProposedAction();
    else
        event->ignore();
}

void SidebarList::dragLeaveEvent(QDragLeaveEvent *event)
{
    setDropTarget({});
    RowList::dragLeaveEvent(event);
}

void SidebarList::dropEvent(QDropEvent *event)
{
    setDropTarget({});
    const QModelIndex index = indexAt(event->position().toPoint());
    if (model()->dropMimeData(event->mimeData(), event->dropAction(), -1, -1, index))
        event->acceptProposedAction();
    else
        event->ignore();
    stopAutoScroll();
    setState(NoState);
}

void SidebarList::setDropTarget(const QModelIndex &index)
{
    if (m_dropTarget == index)
        return;
    viewport()->update(visualRect(m_dropTarget));
    m_dropTarget = index;
    viewport()->update(visualRect(m_dropTarget));
}
