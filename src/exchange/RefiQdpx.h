#pragma once

#include "exchange/ExchangeError.h"

#include <QLatin1StringView>
#include <QStringView>

#include <optional>

namespace ChildProcess {
struct Result;
}

/// Exchange of whole projects with other tools, as REFI-QDA archives. What export and import share.
namespace RefiQdpx {

class RefiError : public ExchangeError {
public:
    /// Of a program that failed; the whole sentence.
    explicit RefiError(QString description) : ExchangeError(std::move(description)) { }
    /// Of a file that is no project, or none that can be taken.
    [[nodiscard]] static RefiError notUsable(const QString &reason);
};

/// The form of a colour in exchange documents: a number sign and six upper-case hexadecimal digits. Takes six or three
/// digits of either case, with or without the sign and blanks around; everything else becomes `fallbackColor`.
[[nodiscard]] QString normalizedColor(QStringView hex);
inline constexpr QLatin1StringView fallbackColor("#8E8E93");

/// The memo without blanks and line breaks around it; absent if nothing is left.
[[nodiscard]] std::optional<QString> trimmedMemo(const std::optional<QString> &memo);

/// Throws RefiError if `program` couldn't be run or ended with another status than 0.
void throwUnlessSucceeded(const QString &program, const ChildProcess::Result &result);

} // namespace RefiQdpx
