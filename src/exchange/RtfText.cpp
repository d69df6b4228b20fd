#include "exchange/RtfText.h"

#include "exchange/RtfReader.h"

#include <algorithm>

namespace {

QByteArrayView withoutLeadingBlanks(QByteArrayView bytes)
{
    constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    if (bytes.startsWith(byteOrderMark))
        bytes = bytes.sliced(byteOrderMark.size());
    const auto isBlank = [](char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); };
    const auto *start = std::find_if_not(bytes.begin(), bytes.end(), isBlank);
    return bytes.sliced(start - bytes.begin());
}

} // namespace

std::optional<QString> RtfText::plainText(QByteArrayView rtf)
{
    const QByteArrayView document = withoutLeadingBlanks(rtf);
    if (!document.startsWith("{\\rtf"))
        return {};
    return RtfReader(document).readText();
}
