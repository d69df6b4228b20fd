#pragma once

#include <QString>

/// `text` with every surrogate that is no half of a pair replaced by U+FFFD, one unit for one unit. UTF-8, and with it
/// the stored file, can't hold such a unit; replacing it before a text is used keeps memory and file the same.
[[nodiscard]] QString replaceUnpairedSurrogates(const QString &text);
