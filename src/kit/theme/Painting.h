#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

/// The few shapes that everything in the window is made of.
namespace Painting {

/// Painted with antialiasing while it lives.
class Smooth {
public:
    explicit Smooth(QPainter &painter);
    ~Smooth();
    Smooth(const Smooth &) = delete;
    Smooth &operator=(const Smooth &) = delete;

private:
    QPainter &m_painter;
};

/// A rounded rectangle without an edge. A radius beyond half of the shorter side makes a capsule.
void fill(QPainter &painter, const QRectF &rect, double radius, const QColor &color);
/// A line of `width` along the inside of the rounded rectangle's border.
void edge(QPainter &painter, const QRectF &rect, double radius, const QColor &color, double width = 1);
/// A surface with its edge.
void box(QPainter &painter, const QRectF &rect, double radius, const QColor &color, const QColor &edgeColor);
/// The dot of a code: its colour, with an inner ring that keeps pale colours in shape.
void dot(QPainter &painter, const QRectF &rect, const QColor &color);
/// `rect` with its edges on whole device pixels.
[[nodiscard]] QRectF snapped(const QPainter &painter, const QRectF &rect);

} // namespace Painting
