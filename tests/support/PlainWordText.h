#pragma once

#include <QString>

/// The plain version of WordText: one replacement after the other over the whole text, slow but easy to check. Takes
/// only valid UTF-16, as regular expressions do.
namespace PlainWordText {
[[nodiscard]] QString plainText(const QString &wordXML);
[[nodiscard]] QString decodeNumericEntities(const QString &text);
} // namespace PlainWordText
