#pragma once

#include <QtGlobal>

class QFont;
class QPainter;
class QRect;
class QString;

/// One line of text in a row.
namespace RowText {

/// The beginning of `text`, as much as the widest row can show, with line breaks as blanks.
[[nodiscard]] QString oneLine(const QString &text);
/// What of `text` fits into `width` logical pixels, with "…" where it had to be cut, line breaks as blanks. The cost
/// doesn't grow with the part that doesn't fit.
[[nodiscard]] QString fitting(const QString &text, const QFont &font, int width);
/// A name as an entry of a menu shows it: short enough, an ampersand is an ampersand, and a tabulator begins no
/// shortcut.
[[nodiscard]] QString forMenu(const QString &name, const QFont &font);
/// In the painter's pen, in the middle of the height of `rect`, beginning where `direction`, that of the window,
/// begins.
void paint(QPainter &painter, const QRect &rect, const QFont &font, const QString &text, Qt::LayoutDirection direction);

} // namespace RowText
