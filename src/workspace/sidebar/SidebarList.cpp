#include "workspace/sidebar/SidebarList.h"

#include "kit/lists/RowDelegate.h"
#include "kit/theme/Painting.h"
#include "kit/theme/PopupShape.h"
#include "kit/theme/Shadow.h"
#include "kit/theme/Theme.h"
#include "workspace/sidebar/SidebarMetrics.h"
#include "workspace/sidebar/SidebarModel.h"

#include <QApplication>
#include <QDrag>
#include <QDragMoveEvent>
#include <QHoverEvent>
#include <QPainter>
#include <QPixmap>
#include <QResizeEvent>

#include <utility>

namespace {

/// While this exists, only `place` takes drops: a memo or a field would insert the code's id as text.
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

void paintCard(QPainter &painter, const QRect &card)
{
    constexpr double opacity = .93; // the row below shows through a little
    const ThemeColors &colors = Theme::colors();
    if (!windowsCanBeTranslucent()) { // then neither can a drag picture
        Painting::box(painter, card, 0, colors.raised, colors.raisedEdge);
        return;
    }
    Shadow::hint().paint(painter, card, Metrics::rowRadius);
    painter.setOpacity(opacity);
    Painting::box(painter, card, Metrics::rowRadius, colors.raised, colors.raisedEdge);
    painter.setOpacity(1);
}

/// What hangs at the mouse while a row is dragged.
struct DragPicture {
    QPixmap pixmap;
    QPoint origin; ///< where the row's left top corner lies in the pixmap, in logical pixels
};

/// The row, from a little before its mark to a little behind its count, on a raised card.
DragPicture pictureOf(const SidebarList &list, const QModelIndex &index)
{
    const int before = SidebarMetrics::markEnd - Metrics::dotDiameter - SidebarMetrics::rowInset
        + SidebarModel::rowAt(index).depth * SidebarMetrics::levelIndent;
    const QRect row(QPoint(), list.visualRect(index).size());
    const QRect card =
        QStyle::visualRect(list.layoutDirection(), row, row.adjusted(before, 0, -SidebarMetrics::rowInset, 0));
    const QRect whole = card.marginsAdded(windowsCanBeTranslucent() ? Shadow::hint().reach() : QMargins());

    const double ratio = list.devicePixelRatioF();
    DragPicture picture{QPixmap(whole.size() * ratio), -whole.topLeft()};
    picture.pixmap.setDevicePixelRatio(ratio);
    picture.pixmap.fill(Qt::transparent);
    QPainter painter(&picture.pixmap);
    painter.translate(picture.origin);
    paintCard(painter, card);
    static_cast<const RowDelegate &>(*list.itemDelegate()).paintContent(painter, row, list.layoutDirection(), index);
    return picture;
}

} // namespace

SidebarList::SidebarList(const QString &accessibleName, QWidget *parent) : RowList(accessibleName, parent)
{
    viewport()->setAutoFillBackground(false);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent); // see paintEvent(); makes scrolling copy pixels
    setAcceptDrops(true);
    setDropIndicatorShown(false);
}

void SidebarList::keepScrolled(const std::function<void()> &change)
{
    const bool scrolls = hasAutoScroll();
    setAutoScroll(false);
    change();
    executeDelayedItemsLayout(); // or a paint event before it would show an empty list
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
    if (!m_dropTarget.isValid())
        return;
    QPainter painter(viewport());
    const QRect ground = visualRect(m_dropTarget).adjusted(SidebarMetrics::rowInset, 0, -SidebarMetrics::rowInset, 0);
    Painting::edge(painter, ground, Metrics::rowRadius, Theme::colors().accentForeground, Metrics::ringWidth);
}

/// While something is dragged, the list scrolls by itself near its edges, and the mouse comes over other rows.
void SidebarList::scrollContentsBy(int dx, int dy)
{
    RowList::scrollContentsBy(dx, dy);
    showDropTarget();
}

/// The hint's height depends on the width, which QListView doesn't expect.
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

/// QListView would drag only what is selected.
void SidebarList::mouseMoveEvent(QMouseEvent *event)
{
    RowList::mouseMoveEvent(event);
    const int distance = (event->position().toPoint() - m_pressedAt).manhattanLength();
    if (!event->buttons().testFlag(Qt::LeftButton) || distance < QApplication::startDragDistance()
        || !m_pressed.flags().testFlag(Qt::ItemIsDragEnabled))
        return;
    drag(std::exchange(m_pressed, QModelIndex()));
}

void SidebarList::drag(const QModelIndex &index)
{
    const QRect row = visualRect(index);
    auto *drag = new QDrag(this); // Qt deletes it at the end
    drag->setMimeData(model()->mimeData({index}));
    new OnlyPlaceToDrop(*viewport(), *drag);
    const DragPicture picture = pictureOf(*this, index);
    drag->setPixmap(picture.pixmap);
    // A whole row below the mouse, so that it never covers the row that takes the drop.
    drag->setHotSpot(picture.origin + QPoint(m_pressedAt.x() - row.left(), -row.height()));
    drag->exec(Qt::CopyAction); // after a move QListView removes the selected row
    QHoverEvent leave(QEvent::HoverLeave, QPointF(), QPointF(), QPointF());
    viewportEvent(&leave); // the mouse may have left during the drag, which sends no such event
}

void SidebarList::dragMoveEvent(QDragMoveEvent *event)
{
    RowList::dragMoveEvent(event); // scrolls near the edges
    m_dragged = event->mimeData();
    m_draggedTo = event->position().toPoint();
    if (showDropTarget())
        event->acceptProposedAction();
    else
        event->ignore();
}

void SidebarList::dragLeaveEvent(QDragLeaveEvent *event)
{
    endDrag();
    RowList::dragLeaveEvent(event);
}

void SidebarList::dropEvent(QDropEvent *event)
{
    endDrag();
    const QModelIndex index = indexAt(event->position().toPoint());
    if (model()->dropMimeData(event->mimeData(), event->dropAction(), -1, -1, index))
        event->acceptProposedAction();
    else
        event->ignore();
    stopAutoScroll();
    setState(NoState);
}

void SidebarList::endDrag()
{
    m_dragged.clear();
    showDropTarget();
}

bool SidebarList::showDropTarget()
{
    QModelIndex target;
    if (m_dragged) {
        const QModelIndex index = indexAt(m_draggedTo);
        if (model()->canDropMimeData(m_dragged, Qt::CopyAction, -1, -1, index))
            target = index;
    }
    if (m_dropTarget != target) {
        viewport()->update(visualRect(m_dropTarget));
        m_dropTarget = target;
        viewport()->update(visualRect(m_dropTarget));
    }
    return target.isValid();
}
