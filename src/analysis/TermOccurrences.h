#pragma once

#include "records/TextRange.h"

#include <QStringView>

#include <optional>
#include <vector>

/// Where in a text a term stands.
namespace TermOccurrences {

/// The ranges of the tokens of `text` that are `term`, in the order of the text. With `passages`, only those that share
/// a unit with one of them. Compares in place, in one walk over the text; only words with marks and the like are
/// copied.
[[nodiscard]] std::vector<TextRange> occurrences(QStringView text, QStringView term, qsizetype minLength,
    bool ignoreStopwords, const std::optional<std::vector<TextRange>> &passages);

} // namespace TermOccurrences
