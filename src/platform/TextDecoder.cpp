#include "platform/TextDecoder.h"

#include "platform/UnpairedSurrogates.h"

#include <QStringDecoder>
#include <QtEndian>

#include <algorithm>
#include <memory>

#include <unicode/ucnv.h>

namespace {

constexpr QChar byteOrderMark(u'\uFEFF');

struct ConverterCloser {
    void operator()(UConverter *converter) const noexcept { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

Converter strictConverter(const char *name)
{
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(name, &status));
    if (converter)
        ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    return U_SUCCESS(status) ? std::move(converter) : nullptr;
}

/// For encodings that never make more UTF-16 units than they have bytes.
std::optional<QString> decodedStrictly(const char *name, QByteArrayView bytes)
{
    constexpr qsizetype stride = 1 << 20; // the converter counts with 32 bits
    const Converter converter = strictConverter(name);
    if (!converter)
        return {};
    QString text(bytes.size(), Qt::Uninitialized);
    auto *const begin = reinterpret_cast<char16_t *>(text.data());
    char16_t *target = begin;
    qsizetype end = 0;
    do {
        const char *source = bytes.data() + end;
        end = std::min(end + stride, bytes.size());
        UErrorCode status = U_ZERO_ERROR;
        ucnv_toUnicode(converter.get(), &target, begin + end, &source, bytes.data() + end, nullptr,
            UBool(end == bytes.size()), &status);
        if (U_FAILURE(status))
            return {};
    } while (end < bytes.size());
    text.truncate(target - begin);
    return text;
}

} // namespace

std::optional<QString> TextDecoder::utf8(QByteArrayView bytes)
{
    if (!bytes.isValidUtf8())
        return {};
    QString text = QString::fromUtf8(bytes); // leaves the byte-order mark out
    text.squeeze(); // the buffer has one unit per byte, and a document's text stays in memory
    return text;
}

std::optional<QString> TextDecoder::utf16(QByteArrayView bytes)
{
    const bool isLittleEndian = bytes.startsWith(QByteArrayView("\xFF\xFE", 2));
    const bool isBigEndian = bytes.startsWith(QByteArrayView("\xFE\xFF", 2));
    if ((!isLittleEndian && !isBigEndian) || bytes.size() % 2 != 0)
        return {};
    const QByteArrayView units = bytes.sliced(2);
    QString text(units.size() / 2, Qt::Uninitialized);
    if (isLittleEndian)
        qFromLittleEndian<char16_t>(units.data(), text.size(), text.data());
    else
        qFromBigEndian<char16_t>(units.data(), text.size(), text.data());
    return replaceUnpairedSurrogates(std::move(text));
}

std::optional<QString> TextDecoder::gb18030(QByteArrayView bytes)
{
    std::optional<QString> text = decodedStrictly("GB18030", bytes);
    if (!text)
        return {};
    if (text->startsWith(byteOrderMark))
        text->remove(0, 1);
    text->squeeze();
    return text;
}

QString TextDecoder::unmarkedUtf8(QByteArrayView bytes)
{
    if (!bytes.startsWith("\xEF\xBB\xBF"))
        return QString::fromUtf8(bytes);
    using Flag = QStringDecoder::Flag;
    QStringDecoder decoder(QStringDecoder::Utf8, Flag::ConvertInitialBom | Flag::Stateless);
    return decoder(bytes);
}

QString TextDecoder::latin1(QByteArrayView bytes)
{
    return QString::fromLatin1(bytes);
}

QString TextDecoder::decoded(QByteArrayView bytes, std::initializer_list<Decoder> decoders)
{
    for (const Decoder decoder : decoders)
        if (std::optional<QString> text = decoder(bytes))
            return *std::move(text);
    return latin1(bytes);
}
