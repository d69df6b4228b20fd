#pragma once

#include <QtGlobal>

class QFont;
class QString;

/// One line of text in a row.
namespace RowText {

/// Line breaks and tabs as blanks.
[[nodiscard]] QString withoutBreaks(QString text);
/// The beginning of `text`, as much as the widest row can show, with line breaks as blanks.
[[nodiscard]] QString oneLine(const QString &text);
/// What of `text` fits into `width` logical pixels, with "…" where it had to be cut, line breaks as blanks. The cost
/// doesn't grow with the part that doesn't fit.
[[nodiscard]] QString fitting(const QString &text, const QFont &font, int width);
/// A name for an entry of a menu: cut to a fitting width, and with ampersands and tabs that don't begin shortcuts.
[[nodiscard]] QString forMenu(const QString &name, const QFont &font);
/// "1 passage", "1,234 passages": a count in the user's locale, and a noun whose plural ends in "s".
[[nodiscard]] QString counted(qint64 count, const QString &noun);

} // namespace RowText
