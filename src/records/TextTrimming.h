#pragma once

#include <QStringView>
#include <QtGlobal>

/// Blanks are the space separators and the tabulator; line breaks are U+000A to U+000D, U+0085, U+2028 and U+2029.
namespace TextTrimming {

[[nodiscard]] bool isBlank(char16_t unit);
[[nodiscard]] bool isLineBreak(char16_t unit);

/// Without the blanks and line breaks at both ends.
[[nodiscard]] QStringView trimmed(QStringView text);
/// Without the blanks at both ends; a line break ends the trimming.
[[nodiscard]] QStringView trimmedBlanks(QStringView text);

} // namespace TextTrimming

/// The longest name or title that is typed or read from another tool's file, in UTF-16 code units. A longer one would
/// make an archive that no import accepts.
inline constexpr qsizetype maxNameLength = 1 << 18;
