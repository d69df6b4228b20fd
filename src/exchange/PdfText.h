#pragma once

#include <QByteArrayView>
#include <QStringList>

#include <functional>
#include <optional>

namespace PdfText {
/// The text of each page, column by column; empty for a page without text. Absent if the bytes are no PDF, or one with
/// a password. Throws ImportStopped when `mayGoOn`, which is asked before each page, returns false.
[[nodiscard]] std::optional<QStringList> pages(
    QByteArrayView bytes, const std::function<bool()> &mayGoOn = [] { return true; });
} // namespace PdfText
