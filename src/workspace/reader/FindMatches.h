#pragma once

#include "records/TextRange.h"

#include <QStringView>

#include <vector>

namespace FindMatches {
/// All occurrences of `needle` in `text`, in order and without overlaps, in UTF-16 code units of `text`. Ignores case;
/// spaces count. Nothing for an empty needle. O(n).
[[nodiscard]] std::vector<TextRange> in(QStringView text, QStringView needle);
} // namespace FindMatches
