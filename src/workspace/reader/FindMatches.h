#pragma once

#include "records/TextRange.h"

#include <QStringView>

#include <vector>

/// Where a search text stands in a document.
namespace FindMatches {
/// All places of `needle` in `text`, in order and without overlaps, in UTF-16 code units of `text`. Case doesn't
/// matter; blanks do. Nothing for an empty needle. O(n).
[[nodiscard]] std::vector<TextRange> in(QStringView text, QStringView needle);
} // namespace FindMatches
