#pragma once

#include <QtGlobal>

/// The longest name or title that is typed or read from another tool's file, in UTF-16 code units. A longer one would
/// make an archive that no import accepts.
inline constexpr qsizetype maxNameLength = 1 << 18;
