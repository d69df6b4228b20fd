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

RefiError::RefiError(Kind kind, QString text) : m_kind(kind), m_text(std::move(text))
{
}

QString RefiError::description() const
{
    switch (m_kind) {
    case Kind::notAQdpx:
        return u"Not a usable REFI-QDA file: "_s + m_text;
    case Kind::commandFailed:
        return m_text;
    }
    Q_UNREACHABLE();
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

void runCommand(const QString &program, const QStringList &arguments, const QString &workingDirectory)
{
    throwUnlessSucceeded(
        program, ChildProcess::run({.program = program, .arguments = arguments, .workingDirectory = workingDirectory}));
}

void throwUnlessSucceeded(const QString &program, const ChildProcess::Result &result)
{
    if (result.end == ChildProcess::Result::End::notStarted)
        throw RefiError(RefiError::Kind::commandFailed, u"could not run "_s + program);
    if (!result.succeeded())
        throw RefiError(
            RefiError::Kind::commandFailed, program + u" failed with status "_s + QString::number(result.status));
}

} // namespace RefiQdpx
