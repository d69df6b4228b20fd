#include "exchange/RefiQdpx.h"

#include "platform/ChildProcess.h"
#include "records/TextTrimming.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isHexadecimal(QStringView text)
{
    return std::ranges::all_of(
        text, [](QChar unit) { return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'F'); });
}

} // namespace

namespace RefiQdpx {

RefiError RefiError::notUsable(const QString &reason)
{
    return RefiError(u"Not a usable REFI-QDA file: "_s + reason);
}

QString normalizedColor(QStringView hex)
{
    const QString digits = TextTrimming::trimmedBlanks(hex).toString().remove(u'#').toUpper();
    if (!isHexadecimal(digits))
        return fallbackColor;
    if (digits.size() == 6)
        return u'#' + digits;
    if (digits.size() != 3)
        return fallbackColor;
    QString result = u"#"_s;
    for (const QChar digit : digits)
        result.append(digit).append(digit);
    return result;
}

std::optional<QString> trimmedMemo(const std::optional<QString> &memo)
{
    const QStringView trimmed = memo ? TextTrimming::trimmed(*memo) : QStringView();
    return trimmed.isEmpty() ? std::nullopt : std::optional(trimmed.toString());
}

void throwUnlessSucceeded(const QString &program, const ChildProcess::Result &result)
{
    if (result.end == ChildProcess::Result::End::notStarted)
        throw RefiError(u"could not run "_s + program);
    if (!result.succeeded())
        throw RefiError(program + u" failed with status "_s + QString::number(result.status));
}

} // namespace RefiQdpx
