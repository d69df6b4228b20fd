#pragma once

#include "platform/LocalizedError.h"

#include <QLatin1StringView>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace ChildProcess {
struct Result;
}

/// Exchange of whole projects with other tools, as REFI-QDA archives. What export and import share.
namespace RefiQdpx {

class RefiError : public LocalizedError {
public:
    enum class Kind {
        notAQdpx, ///< the text is the reason
        commandFailed, ///< the text is the message
    };

    RefiError(Kind kind, QString text);

    [[nodiscard]] Kind kind() const noexcept { return m_kind; }
    [[nodiscard]] QString description() const override;

private:
    Kind m_kind;
    QString m_text;
};

/// The form of a colour in exchange documents: a number sign and six upper-case hexadecimal digits. Takes six or three
/// digits of either case, among blanks and with or without the sign; all else becomes `fallbackColor`.
[[nodiscard]] QString normalizedColor(QStringView hex);
inline constexpr QLatin1StringView fallbackColor("#8E8E93");

/// The memo without blanks and line breaks around it; absent if nothing is left.
[[nodiscard]] std::optional<QString> trimmedMemo(const std::optional<QString> &memo);

/// Runs a program, given by its absolute path, to its end. Throws RefiError unless it ends with status 0.
void runCommand(const QString &program, const QStringList &arguments, const QString &workingDirectory = {});
/// Throws RefiError if `program` couldn't be run or ended with another status than 0.
void throwUnlessSucceeded(const QString &program, const ChildProcess::Result &result);

} // namespace RefiQdpx
