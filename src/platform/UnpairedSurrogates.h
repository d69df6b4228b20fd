#pragma once

#include <QString>

/// `text` with each surrogate outside a pair replaced by U+FFFD, unit for unit. UTF-8 has no form for such a unit;
/// replacing it before the text is stored keeps memory and file alike.
[[nodiscard]] QString replaceUnpairedSurrogates(QString text);
