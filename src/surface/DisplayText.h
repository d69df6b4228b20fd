#pragma once

#include "records/TextRange.h"

#include <QString>

/// The text that is laid out in place of a document's. It has the same length, so a position in it is the position in
/// the document's text. All positions are in UTF-16 code units.
namespace DisplayText {

/// A paragraph longer than this is laid out in pieces, where it has spaces to part it at.
inline constexpr qsizetype longestParagraph = 16'000;

/// `text` with each unit that the text engine would swallow, join or choke on replaced by exactly one other. O(n).
[[nodiscard]] QString of(const QString &text);

/// `position`, moved before a CR LF that it stands in the middle of.
[[nodiscard]] qint64 outsideLineBreak(QStringView text, qint64 position);

/// The paragraph that holds `position`, with the line break that ends it. `position` is from 0 to the text's length.
[[nodiscard]] TextRange paragraphAt(QStringView text, qint64 position);

} // namespace DisplayText
