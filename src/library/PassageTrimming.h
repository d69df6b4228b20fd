#pragma once

#include "records/TextRange.h"

#include <QStringView>

/// Which stretch of a text a selection really means. All positions in UTF-16 code units.
namespace PassageTrimming {

/// `range` clamped to `text`, without the blanks and line breaks at its ends. Its length is 0 when nothing is left.
/// Halves of surrogate pairs aren't blank. Any range is allowed, also one whose end overflows.
[[nodiscard]] TextRange passage(QStringView text, const TextRange &range);

/// Whether `range` holds at least one unit and lies wholly in `text`.
[[nodiscard]] bool liesIn(QStringView text, const TextRange &range);

} // namespace PassageTrimming
