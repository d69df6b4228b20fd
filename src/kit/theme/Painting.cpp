#include "kit/theme/Painting.h"

#include "kit/theme/Theme.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace {

double fitting(double radius, const QRectF &rect)
{
    return std::clamp(radius, 0., std::min(rect.width(), rect.height()) / 2);
}

} // namespace

Painting::Smooth::Smooth(QPainter &painter) : m_painter(painter)
{
    m_painter.save();
    m_painter.setRenderHint(QPainter::Antialiasing);
}

Painting::Smooth::~Smooth()
{
    m_painter.restore();
}

void Painting::fill(QPainter &painter, const QRectF &rect, double radius, const QColor &color)
{
    const Smooth smooth(painter);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    const double rounding = fitting(radius, rect);
    painter.drawRoundedRect(rect, rounding, rounding);
}

void Painting::edge(QPainter &painter, const QRectF &rect, double radius, const QColor &color, double width)
{
    const Smooth smooth(painter);
    const double half = width / 2;
    const QRectF middle = rect.adjusted(half, half, -half, -half);
    painter.setPen(QPen(color, width));
    painter.setBrush(Qt::NoBrush);
    const double rounding = fitting(radius - half, middle);
    painter.drawRoundedRect(middle, rounding, rounding);
}

void Painting::box(QPainter &painter, const QRectF &rect, double radius, const QColor &color, const QColor &edgeColor)
{
    fill(painter, rect, radius, color);
    edge(painter, rect, radius, edgeColor);
}

void Painting::dot(QPainter &painter, const QRectF &rect, const QColor &color)
{
    constexpr double ringWidth = .75;
    const ThemeColors &colors = Theme::colors();
    QColor ring = colors.look.isDark ? Qt::white : Qt::black;
    ring.setAlphaF(.10F);
    fill(painter, rect, rect.width() / 2, color);
    if (colors.look.hasHighContrast)
        edge(painter, rect, rect.width() / 2, colors.text);
    else
        edge(painter, rect, rect.width() / 2, ring, ringWidth);
}

QRectF Painting::snapped(const QPainter &painter, const QRectF &rect)
{
    const double ratio = painter.device()->devicePixelRatioF();
    const auto toPixel = [ratio](double value) { return std::round(value * ratio) / ratio; };
    return {QPointF(toPixel(rect.left()), toPixel(rect.top())), QPointF(toPixel(rect.right()), toPixel(rect.bottom()))};
}
