#pragma once

#include "records/TextRange.h"

#include <QStringView>

#include <vector>

/// Where a search text stands in a text that may write it otherwise. All positions in UTF-16 code units of the text.
namespace TextMatches {

/// All places of `needle` in `text`, in order and without overlaps. Case doesn't matter; blanks do. None for an empty
/// needle. O(n).
[[nodiscard]] std::vector<TextRange> allIn(QStringView text, QStringView needle);

/// The first stretch of `text` that is `term` regardless of case and canonical equivalence, and that doesn't separate a
/// letter from its marks. Of length 0 without one, or for an empty term. Makes a folded copy of both, so it is meant
/// for texts of a few lines.
[[nodiscard]] TextRange firstIn(QStringView text, QStringView term);

} // namespace TextMatches
