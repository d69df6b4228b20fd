#pragma once

#include <QString>

/// The text of a Word part step by step, each over the whole text: slow, and plain enough to be believed. Takes only
/// valid UTF-16, as regular expressions do.
namespace PlainWordText {
[[nodiscard]] QString plainText(const QString &wordXML);
[[nodiscard]] QString decodeNumericEntities(const QString &text);
} // namespace PlainWordText
