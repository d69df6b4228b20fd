#pragma once

#include <Qt>

class QFont;
class QPainter;
class QRect;
class QString;

/// One line of text in a row.
namespace RowText {

/// What of `text` fits into `width` logical pixels, with "…" where it had to be cut, line breaks as blanks. The cost
/// doesn't grow with the part that doesn't fit.
[[nodiscard]] QString fitting(const QString &text, const QFont &font, int width);
/// In the painter's pen, in the middle of the height of `rect`, beginning where `direction`, that of the window,
/// begins.
void paint(QPainter &painter, const QRect &rect, const QFont &font, const QString &text, Qt::LayoutDirection direction);

} // namespace RowText
