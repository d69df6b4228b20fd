#pragma once

#include "records/TextRange.h"

#include <QStringView>

#include <optional>
#include <vector>

/// Where in a text a term stands.
namespace TermOccurrences {

/// The ranges of the tokens of `text`, as `WordFrequency::tokens` gives them, that are `term`, in the order of the
/// text. With `passages`, which must be sorted by location, only those that share a unit with one of them. Compares in
/// place, in one walk over the text; only words with marks and their like are looked at in a copy.
[[nodiscard]] std::vector<TextRange> occurrences(QStringView text, QStringView term, qsizetype minLength,
    bool ignoreStopwords, const std::optional<std::vector<TextRange>> &passages);

} // namespace TermOccurrences
