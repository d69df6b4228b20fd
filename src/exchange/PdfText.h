#pragma once

#include <QByteArrayView>
#include <QStringList>

#include <functional>
#include <optional>

namespace PdfText {
/// The text of each page in reading order, column by column, as the page gives it; an empty entry for a page without
/// text. Absent if the bytes are no PDF, or one that asks for a password. Nothing is printed about a damaged file.
/// Throws ImportStopped when `mayGoOn`, which is asked before each page, says no.
[[nodiscard]] std::optional<QStringList> pages(
    QByteArrayView bytes, const std::function<bool()> &mayGoOn = [] { return true; });
} // namespace PdfText
