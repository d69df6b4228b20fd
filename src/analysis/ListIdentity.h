#pragma once

#include <QUuid>

/// Identities for the rows of lists, which are made anew with each list and never stored.
namespace ListIdentity {

/// A random identifier.
[[nodiscard]] QUuid fresh();
/// That of a row in a list which has one identity as a whole: another one for each row, and the same each time.
[[nodiscard]] QUuid ofRow(const QUuid &list, qsizetype row);

} // namespace ListIdentity
