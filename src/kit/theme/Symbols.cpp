#include "kit/theme/Symbols.h"

#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Theme.h"

#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// The drawing's text, read once.
QByteArray source(const QString &name)
{
    static QHash<QString, QByteArray> sources;
    const auto found = sources.constFind(name);
    if (found != sources.constEnd())
        return *found;
    QFile file(u":/icons/%1.svg"_s.arg(name));
    return *sources.insert(name, file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
}

QByteArray inked(QByteArray drawing, const QColor &color, double stroke)
{
    drawing.replace("currentColor", color.name(QColor::HexRgb).toLatin1());
    drawing.replace("stroke-width=\"1.4\"", "stroke-width=\"" + QByteArray::number(stroke) + '"');
    return drawing;
}

QPixmap render(const QString &name, const QColor &color, double stroke, int side)
{
    const QByteArray drawing = source(name);
    if (drawing.isEmpty() || side <= 0)
        return {};
    QSvgRenderer renderer(inked(drawing, color, stroke));
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setOpacity(color.alphaF());
    renderer.render(&painter);
    return pixmap;
}

/// Common to both engines: everything goes through `paint`.
class PaintedIcon : public QIconEngine {
public:
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1);
    }
    /// `size` is in device pixels.
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal scale) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        pixmap.setDevicePixelRatio(scale);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), (QSizeF(size) / scale).toSize()), mode, state);
        return pixmap;
    }
};

class SymbolEngine final : public PaintedIcon {
public:
    SymbolEngine(QString name, Symbols::Tint tint, double stroke)
        : m_name(std::move(name)),
          m_tint(tint),
          m_stroke(stroke)
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const int side = std::min(rect.width(), rect.height());
        QRect square(0, 0, side, side);
        square.moveCenter(rect.center());
        Symbols::paint(*painter, square, m_name, Symbols::colorOf(tintIn(mode)), m_stroke);
    }
    [[nodiscard]] QIconEngine *clone() const override { return new SymbolEngine(*this); }
    [[nodiscard]] QString key() const override { return u"VornSymbol"_s; }

private:
    [[nodiscard]] Symbols::Tint tintIn(QIcon::Mode mode) const
    {
        if (mode == QIcon::Disabled)
            return Symbols::Tint::tertiary;
        const bool awakens = mode == QIcon::Active && m_tint == Symbols::Tint::secondary;
        return awakens ? Symbols::Tint::text : m_tint;
    }

    QString m_name;
    Symbols::Tint m_tint;
    double m_stroke;
};

class DotEngine final : public PaintedIcon {
public:
    explicit DotEngine(const QColor &color) : m_color(color) { }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode, QIcon::State) override
    {
        const QSizeF size(Metrics::dotDiameter, Metrics::dotDiameter);
        QRectF square(QPointF(), size);
        square.moveCenter(QRectF(rect).center());
        Painting::dot(*painter, Painting::snapped(*painter, square), m_color);
    }
    [[nodiscard]] QIconEngine *clone() const override { return new DotEngine(*this); }
    [[nodiscard]] QString key() const override { return u"VornDot"_s; }

private:
    QColor m_color;
};

} // namespace

QPixmap Symbols::pixmap(const QString &name, double size, const QColor &color, double stroke, double ratio)
{
    const int side = int(std::lround(size * ratio));
    const QString key = u"symbol %1 %2 %3 %4"_s.arg(name).arg(side).arg(color.rgba(), 0, 16).arg(stroke);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = render(name, color, stroke, side);
        if (!pixmap.isNull())
            QPixmapCache::insert(key, pixmap);
    }
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

void Symbols::paint(QPainter &painter, const QRectF &rect, const QString &name, const QColor &color, double stroke)
{
    const double size = std::min(rect.width(), rect.height());
    const double ratio = painter.device()->devicePixelRatioF();
    const QPixmap picture = pixmap(name, size, color, stroke > 0 ? stroke : strokeFor(size), ratio);
    painter.drawPixmap(Painting::snapped(painter, rect).topLeft(), picture);
}

QIcon Symbols::icon(const QString &name, Tint tint, double stroke)
{
    return QIcon(new SymbolEngine(name, tint, stroke));
}

QIcon Symbols::dot(const QColor &color)
{
    return QIcon(new DotEngine(color));
}

QColor Symbols::colorOf(Tint tint)
{
    const ThemeColors &colors = Theme::colors();
    switch (tint) {
    case Tint::text:
        return colors.text;
    case Tint::secondary:
        return colors.secondary;
    case Tint::tertiary:
        return colors.tertiary;
    case Tint::accent:
        return colors.accentForeground;
    case Tint::onAccent:
        return colors.onAccent;
    case Tint::destructive:
        return colors.destructiveText;
    }
    Q_UNREACHABLE();
}
