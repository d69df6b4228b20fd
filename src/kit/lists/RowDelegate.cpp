#include "kit/lists/RowDelegate.h"

#include "kit/controls/LongText.h"
#include "kit/lists/RowLine.h"
#include "kit/lists/RowList.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

RowDelegate::RowDelegate(const RowShape &shape, QObject *parent) : QStyledItemDelegate(parent), m_shape(shape)
{
}

int RowDelegate::gapAbove(const QModelIndex &index) const
{
    return m_shape.gapAbove + (index.row() == 0 ? m_shape.airAbove : 0);
}

int RowDelegate::gapBelow(const QModelIndex &index) const
{
    const bool isLast = index.isValid() && index.row() == index.model()->rowCount() - 1;
    return m_shape.gapBelow + (isLast ? m_shape.airBelow : 0);
}

int RowDelegate::heightWith(int groundHeight, const QModelIndex &index) const
{
    return gapAbove(index) + groundHeight + gapBelow(index);
}

QRect RowDelegate::groundIn(const QRect &row, const QModelIndex &index) const
{
    return row.adjusted(0, gapAbove(index), 0, -gapBelow(index));
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return {option.rect.width(), heightWith(m_shape.height, index)};
}

RowState RowDelegate::stateOf(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return RowList::stateOf(option, index);
}

void RowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QRect ground = groundIn(option.rect, index);
    const RowState state = stateOf(option, index);
    RowPainter(m_shape.inset, m_shape.radius).paint(*painter, ground, state);
    RowLine line(painter, ground, option.direction, state.isHovered);
    painter->save(); // texts change its direction
    fill(line, index);
    painter->restore();
}

void RowDelegate::paintContent(
    QPainter &painter, const QRect &rect, Qt::LayoutDirection direction, const QModelIndex &index) const
{
    RowLine line(&painter, rect, direction);
    fill(line, index);
}

bool RowDelegate::helpEvent(
    QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    RowLine line(nullptr, groundIn(option.rect, index), option.direction);
    if (fill(line, index))
        QToolTip::hideText();
    else
        LongText::showToolTip(event->globalPos(), index.data().toString(), view);
    return true;
}
