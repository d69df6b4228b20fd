#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

/// Plain text of a Rich Text document.
namespace RtfText {

/// The text that a reader of the document sees in its running text: without hidden and deleted text, and without
/// what stands apart from it, as headers, footnotes and comments do. Paragraphs, table rows and page breaks end in a
/// line feed, cells of a row are parted by a tab, and optional hyphens are left out. Bytes that are no character of
/// their code page are U+FFFD.
///
/// Returns nothing when `rtf` isn't Rich Text, which begins with "{\rtf" after optional white space or a byte-order
/// mark. A document that is cut off gives what there is. The text isn't trimmed; it may be empty. O(n); no memory to
/// speak of beyond the result.
[[nodiscard]] std::optional<QString> plainText(QByteArrayView rtf);

} // namespace RtfText
