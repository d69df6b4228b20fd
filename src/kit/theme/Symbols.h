#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

class QPainter;
class QRectF;

/// The line icons, by the names of their files ("doc.text"). They are drawn on a grid of 16 with round strokes, and are
/// rendered for every size, colour and device pixel ratio they are shown in.
namespace Symbols {

/// Which colour of the present look an icon takes; asked whenever it is painted.
enum class Tint { text, secondary, tertiary, accent, onAccent, destructive };

/// The width of the strokes on the grid of 16. Larger icons need thinner strokes to look alike.
inline constexpr double regularStroke = 1.4;
inline constexpr double semiboldStroke = 1.7;
[[nodiscard]] constexpr double strokeFor(double size)
{
    return size >= 28 ? 25.8 / size : regularStroke;
}

/// The icon rendered `size` logical pixels wide and high; nothing for a name that isn't there. Cached.
[[nodiscard]] QPixmap pixmap(const QString &name, double size, const QColor &color, double stroke, double ratio);
/// Paints the icon into the square `rect`, its left top corner moved to a whole device pixel.
void paint(QPainter &painter, const QRectF &rect, const QString &name, const QColor &color, double stroke = 0);

/// For menus and buttons of Qt's own: follows the look, takes the disabled colour by itself, and under the mouse goes
/// from secondary to text.
[[nodiscard]] QIcon icon(const QString &name, Tint tint = Tint::text, double stroke = regularStroke);
/// A dot of 9 in the middle of the icon.
[[nodiscard]] QIcon dot(const QColor &color);

[[nodiscard]] QColor colorOf(Tint tint);

} // namespace Symbols
