#pragma once

#include <QString>
#include <QTextOption>

class QPoint;
class QWidget;

/// Keeps texts of any length from blocking the window or pushing other things off the screen.
namespace LongText {

/// `text`, or its first `maxLength` UTF-16 code units and "…": for names within sentences that wrap.
[[nodiscard]] QString shortened(const QString &text, qsizetype maxLength = 200);

/// Shows `text` as a tool tip: plain, whatever markup it holds, and shortened, since laying out a whole document would
/// block the window. `position` is in screen coordinates.
void showToolTip(const QPoint &position, const QString &text, QWidget *owner);

/// Wraps between words; anywhere in a text that has a word so long that searching for its end at every line would take
/// minutes.
[[nodiscard]] QTextOption::WrapMode wrapMode(QStringView text);

} // namespace LongText
