#pragma once

#include <QString>
#include <QStringView>

/// Plain text out of the main part of a Word document. The part is taken as text and not as XML: what can be read of a
/// damaged one comes in, and nothing can fail. All costs are linear.
namespace WordText {
/// One line per paragraph; a line break is a blank, a tab at most one blank, several empty paragraphs are one empty
/// line. Nothing but blanks and line breaks gives an empty text.
[[nodiscard]] QString plainText(QStringView wordXML);
/// Replaces decimal and hexadecimal character references, "&#233;" and "&#xE9;". A reference that stands for no Unicode
/// scalar disappears.
[[nodiscard]] QString decodeNumericEntities(QStringView text);
} // namespace WordText
