#pragma once

#include <QtGlobal>

/// How long a name or title may be that is typed or comes from another tool, in UTF-16 units. One that is longer would
/// make an archive that no import takes, with all that is in it.
inline constexpr qsizetype longestName = 1 << 18;
