#pragma once

#include "records/TextRange.h"

#include <QString>

/// The text that is laid out in place of a document's own. Both have the same length, so positions are valid in both.
/// All positions are UTF-16 code units.
namespace DisplayText {

/// A paragraph longer than this is laid out in pieces, where it has spaces to part it at.
inline constexpr qsizetype maxParagraph = 16'000;

/// `text` with each unit that QTextDocument would drop, merge or misread replaced by exactly one other. O(n).
[[nodiscard]] QString of(const QString &text);

/// `position`, or the position before it if it lies between CR and LF.
[[nodiscard]] qint64 outsideLineBreak(QStringView text, qint64 position);

/// The paragraph that holds `position` (0 to the text's length), with the line break that ends it.
[[nodiscard]] TextRange paragraphAt(QStringView text, qint64 position);

} // namespace DisplayText
