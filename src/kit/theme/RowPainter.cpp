#include "kit/theme/RowPainter.h"

#include "kit/theme/FocusRing.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Theme.h"

#include <QPainter>
#include <QStyleOptionViewItem>
#include <QWidget>

RowState RowState::of(const QStyleOptionViewItem &option)
{
    const bool hasFocus = option.widget != nullptr && option.widget->hasFocus();
    return {
        .isSelected = option.state.testFlag(QStyle::State_Selected),
        .isHovered = option.state.testFlag(QStyle::State_MouseOver) && option.state.testFlag(QStyle::State_Enabled),
        .listHasFocus = hasFocus,
        .isCurrent = hasFocus && option.state.testFlag(QStyle::State_HasFocus) && FocusRing::isDueTo(*option.widget),
    };
}

QRectF RowPainter::fillRect(const QRectF &row) const
{
    return row.adjusted(m_inset, 0, -m_inset, 0);
}

void RowPainter::paint(QPainter &painter, const QRectF &row, RowState state) const
{
    const ThemeColors &colors = Theme::colors();
    const QRectF rect = fillRect(row);
    if (state.isSelected)
        Painting::fill(painter, rect, m_radius, state.listHasFocus ? colors.selection : colors.quietSelection);
    else if (state.isHovered)
        Painting::fill(painter, rect, m_radius, colors.hover);
    if (state.isCurrent && !state.isSelected)
        Painting::edge(painter, rect, m_radius, colors.accentForeground, Metrics::ringWidth);
    else if (colors.look.hasHighContrast && (state.isSelected || state.isHovered))
        Painting::edge(painter, rect, m_radius, colors.accentForeground);
}
