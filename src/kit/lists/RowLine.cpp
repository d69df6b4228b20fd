#include "kit/lists/RowLine.h"

#include "kit/lists/RowText.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"
#include "platform/LocaleText.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <cmath>

QRect RowLine::placed(const QRect &part) const
{
    return QStyle::visualRect(m_direction, m_whole, part);
}

RowLine RowLine::line(int top, int height) const
{
    RowLine part = *this;
    part.m_rest.setTop(m_rest.top() + top);
    part.m_rest.setHeight(height);
    return part;
}

QRect RowLine::takeSquare(int side, int gap)
{
    const QRect square(m_rest.left(), m_rest.top() + (m_rest.height() - side + 1) / 2, side, side);
    skip(side + gap);
    return placed(square);
}

void RowLine::symbol(const QString &name, const QColor &color, int side, int gap, double stroke)
{
    const QRect square = takeSquare(side, gap);
    if (m_painter != nullptr)
        Symbols::paint(*m_painter, square, name, color, stroke);
}

void RowLine::dot(const QColor &color, int side, int gap)
{
    const QRect square = takeSquare(side, gap);
    if (m_painter != nullptr)
        Painting::dot(*m_painter, square, color);
}

void RowLine::count(qint64 count, const QFont &font, int gap, int minWidth)
{
    const QString text = LocaleText::number(count);
    const int width = std::max(minWidth, QFontMetrics(font).horizontalAdvance(text));
    QRect place = m_rest;
    place.setLeft(m_rest.right() + 1 - width);
    skipAtEnd(width + gap);
    if (m_painter == nullptr)
        return;
    m_painter->setFont(font);
    m_painter->setPen(Theme::colors().secondary);
    const Qt::Alignment alignment = QStyle::visualAlignment(m_direction, Qt::AlignRight | Qt::AlignVCenter);
    m_painter->drawText(placed(place), int(alignment) | Qt::TextSingleLine | Qt::TextDontClip, text);
}

void RowLine::bar(double width, int height, int gap, const QColor &color)
{
    const int top = m_rest.top() + (m_rest.height() - height) / 2;
    QRectF bar(m_rest.right() + 1 - width, top, width, height);
    m_rest.setRight(int(std::floor(bar.left())) - gap - 1);
    if (m_direction == Qt::RightToLeft)
        bar.moveLeft(m_whole.left() + m_whole.right() + 1 - bar.right());
    if (m_painter != nullptr)
        Painting::fill(*m_painter, bar, Metrics::barRadius, color);
}

bool RowLine::text(
    const QString &text, const QFont &font, const QColor &color, std::optional<Qt::LayoutDirection> side) const
{
    const QString shown = RowText::fitting(text, font, m_rest.width());
    if (m_painter != nullptr) {
        m_painter->setFont(font);
        m_painter->setPen(color);
        m_painter->setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        const Qt::Alignment alignment =
            QStyle::visualAlignment(side.value_or(m_direction), Qt::AlignLeft | Qt::AlignVCenter);
        m_painter->drawText(placed(m_rest), int(alignment) | Qt::TextSingleLine | Qt::TextDontClip, shown);
    }
    return shown == text;
}
