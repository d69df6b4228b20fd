#pragma once

#include "records/TextRange.h"

#include <QStringView>

/// Where a term stands in a text that may write it otherwise.
namespace TermMatch {

/// The first stretch of `text`, in its UTF-16 code units, that is `term` without regard to case and to canonical
/// equivalence, and that doesn't separate a letter from its marks. Of length 0 without one, or for an empty term. Makes
/// a folded copy of both, so it is meant for texts of a few lines.
[[nodiscard]] TextRange firstIn(QStringView text, QStringView term);

} // namespace TermMatch
