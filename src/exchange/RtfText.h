#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

/// Plain text of a Rich Text document.
namespace RtfText {

/// The visible running text of the document: without hidden and deleted text, headers, footers, footnotes and comments.
/// Paragraphs, table rows and page breaks end in a line feed, the cells of a row are separated by a tab, and optional
/// hyphens are left out. Bytes that are invalid in their code page become U+FFFD.
///
/// Returns nothing when `rtf` isn't Rich Text, which begins with "{\rtf" after optional white space or a byte-order
/// mark. A truncated document gives what there is. The text isn't trimmed and may be empty. O(n), with little memory
/// beyond the result.
[[nodiscard]] std::optional<QString> plainText(QByteArrayView rtf);

} // namespace RtfText
