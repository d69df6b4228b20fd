#include "Require.h"
#include "platform/TextDecoder.h"

#include <QByteArray>

#include <cstdint>

namespace {

QByteArrayView withoutMark(QByteArrayView utf8)
{
    return utf8.startsWith("\xEF\xBB\xBF") ? utf8.sliced(3) : utf8;
}

} // namespace

/// Decoded text is valid UTF-16, and UTF-8 is encoded again as it was.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArrayView bytes(data, qsizetype(size));
    if (const std::optional<QString> text = TextDecoder::utf8(bytes))
        require(text->isValidUtf16() && text->toUtf8() == withoutMark(bytes));
    if (const std::optional<QString> text = TextDecoder::utf16(bytes))
        require(text->isValidUtf16() && text->size() == bytes.size() / 2 - 1);
    if (const std::optional<QString> text = TextDecoder::gb18030(bytes))
        require(text->isValidUtf16() && text->size() <= bytes.size());
    require(TextDecoder::latin1(bytes).size() == bytes.size());
    return 0;
}
