#pragma once

#include "records/UnitBlock.h"

#include <QStringView>

/// What is counted once, when a document is created. Linear in the text, which may hold unpaired surrogates.
namespace TextStats {

/// Words: each run of letters, marks and numbers, and each ideograph by itself. Punctuation splits words, apostrophes
/// and hyphens included.
template <typename Block = UnitBlock>
[[nodiscard]] qint64 wordCount(QStringView text);

/// User-perceived characters (extended grapheme clusters); never to be used for ranges.
template <typename Block = UnitBlock>
[[nodiscard]] qint64 characterCount(QStringView text);

/// The first `count` user-perceived characters of `text`, or all of it.
[[nodiscard]] QStringView leadingCharacters(QStringView text, qint64 count);

} // namespace TextStats
