#include "Require.h"
#include "exchange/RefiQdpx.h"
#include "records/CodePalette.h"
#include "records/TextTrimming.h"
#include "records/database/ValueEncoding.h"

#include <QRegularExpression>

#include <cstring>

namespace {

using Kind = ValueView::Kind;

void checkComesBack(const QDateTime &date)
{
    const QByteArray stored = std::get<TextValue>(ValueEncoding::encoded(date)).utf8;
    require(stored.size() == 23 && ValueEncoding::parsedDate(stored) == date);
}

void checkDate(QByteArrayView bytes)
{
    const std::optional<QDateTime> date = ValueEncoding::date({.kind = Kind::text, .bytes = bytes});
    require(date == ValueEncoding::date({.kind = Kind::blob, .bytes = bytes}));
    if (!date)
        return;
    require(date->isValid() && date->timeSpec() == Qt::UTC);
    checkComesBack(*date);
}

void checkIdentifier(QByteArrayView bytes)
{
    static const QRegularExpression form(QStringLiteral("\\A[0-9A-Fa-f]{8}(-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12}\\z"));
    const std::optional<QUuid> fromText = ValueEncoding::identifier({.kind = Kind::text, .bytes = bytes});
    require(fromText.has_value() == form.match(QString::fromLatin1(bytes)).hasMatch());
    require(!fromText || fromText->toByteArray(QUuid::WithoutBraces) == bytes.toByteArray().toLower());
    const std::optional<QUuid> fromBlob = ValueEncoding::identifier({.kind = Kind::blob, .bytes = bytes});
    require(fromBlob.has_value() == (bytes.size() == 16));
    require(!fromBlob || fromBlob->toRfc4122() == bytes);
}

void checkNumber(QByteArrayView bytes)
{
    if (bytes.size() < qsizetype(sizeof(qint64)))
        return;
    ValueView view;
    std::memcpy(&view.integer, bytes.data(), sizeof view.integer);
    std::memcpy(&view.real, bytes.data(), sizeof view.real);
    for (const Kind kind : {Kind::integer, Kind::real}) {
        view.kind = kind;
        const std::optional<QDateTime> date = ValueEncoding::date(view);
        if (date)
            checkComesBack(*date);
    }
}

void checkColor(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("\\A#[0-9A-F]{6}\\z"));
    const std::optional<RGBComponents> color = RGBComponents::from(text);
    const QString normalized = RefiQdpx::normalizedColor(text);
    require(form.match(normalized).hasMatch());
    // A stored colour may have line breaks around it, one of an exchange document may not.
    const bool hasLineBreaks = TextTrimming::trimmed(text) != TextTrimming::trimmedBlanks(text);
    require(!color || hasLineBreaks || RGBComponents::from(normalized) == color);
}

} // namespace

/// A stored value is either refused or decoded, and a decoded one is encoded again as it was.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArrayView bytes(data, qsizetype(size));
    checkDate(bytes);
    checkIdentifier(bytes);
    checkNumber(bytes);
    checkColor(QString::fromUtf8(bytes));
    return 0;
}
