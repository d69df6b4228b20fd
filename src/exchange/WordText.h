#pragma once

#include <QString>
#include <QStringView>

/// Plain text of the main part of a Word document. The part is scanned as text, not parsed as XML: a damaged one gives
/// what can be read, and nothing can fail. O(n).
namespace WordText {
/// One line per paragraph; line breaks and tabs become a space, several empty paragraphs one empty line. The result is
/// trimmed.
[[nodiscard]] QString plainText(QStringView wordXML);
/// Replaces decimal and hexadecimal character references, "&#233;" and "&#xE9;". A reference to something that is no
/// Unicode scalar disappears.
[[nodiscard]] QString decodeNumericEntities(QStringView text);
} // namespace WordText
