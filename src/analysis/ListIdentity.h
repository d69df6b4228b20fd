#pragma once

#include <QUuid>

/// Identities for the rows of lists, which are made anew with each list and never stored.
namespace ListIdentity {

/// A random identifier. Drawn from a generator of the thread's own: asking the system for each of 100,000 rows takes
/// longer than finding them.
[[nodiscard]] QUuid fresh();

} // namespace ListIdentity
