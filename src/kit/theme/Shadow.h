#pragma once

#include <QColor>
#include <QMargins>
#include <QRectF>

class QPainter;

/// A soft shadow below a rounded rectangle. `blur` is the whole width of its soft edge, in logical pixels.
struct Shadow {
    QColor color;
    int blur = 0;
    int offset = 0; ///< how far it lies below what casts it

    /// How far the shadow reaches beyond what casts it.
    [[nodiscard]] QMargins reach() const;
    /// Paints the shadow that `body` casts, also under `body` itself. High contrast has no shadows.
    void paint(QPainter &painter, const QRectF &body, double radius) const;

    [[nodiscard]] static Shadow control();
    [[nodiscard]] static Shadow banner();
    [[nodiscard]] static Shadow selectionBar();
    [[nodiscard]] static Shadow hint();
    [[nodiscard]] static Shadow menu(); ///< popovers too
    [[nodiscard]] static Shadow sheet();
};
