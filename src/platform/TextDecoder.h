#pragma once

#include <QByteArrayView>
#include <QString>

#include <initializer_list>
#include <optional>

/// Decoders that refuse invalid input, a character cut off at the end included. The first byte-order mark is dropped:
/// other programs count positions without it. U+0000 and all line ends stay. Linear.
namespace TextDecoder {
[[nodiscard]] std::optional<QString> utf8(QByteArrayView bytes);
/// Takes only data with a byte-order mark, since nearly any even number of bytes is valid UTF-16. Unpaired surrogates,
/// which common programs write, become U+FFFD, unit for unit.
[[nodiscard]] std::optional<QString> utf16(QByteArrayView bytes);
[[nodiscard]] std::optional<QString> gb18030(QByteArrayView bytes);
/// For valid UTF-8 that isn't a file's: a leading U+FEFF is text.
[[nodiscard]] QString unmarkedUtf8(QByteArrayView bytes);
/// Takes any bytes.
[[nodiscard]] QString latin1(QByteArrayView bytes);
/// By the first of `decoders` that doesn't refuse the bytes, else as Latin-1.
using Decoder = std::optional<QString> (*)(QByteArrayView bytes);
[[nodiscard]] QString decoded(QByteArrayView bytes, std::initializer_list<Decoder> decoders);
} // namespace TextDecoder
