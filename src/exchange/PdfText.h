#pragma once

#include <QByteArrayView>
#include <QStringList>

#include <optional>

namespace PdfText {
/// The text of each page in reading order, column by column, as the page gives it; an empty entry for a page without
/// text. Absent if the bytes are no PDF, or one that asks for a password. Nothing is printed about a damaged file.
[[nodiscard]] std::optional<QStringList> pages(QByteArrayView bytes);
} // namespace PdfText
