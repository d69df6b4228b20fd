#pragma once

#include "analysis/QueryResult.h"
#include "analysis/QuerySpec.h"
#include "records/Code.h"
#include "records/Coding.h"
#include "records/Document.h"
#include "records/TextRange.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <span>
#include <vector>

/// Where some codes apply, or all of them at once. A coding of no length covers one unit. Positions in UTF-16 code
/// units; those of codings may be any number.
namespace CompoundQuery {

/// The stretches that lie in at least one coding of every code, ascending and apart from each other. `codings` are
/// those of one document. Ranges that touch don't overlap, but are united. O(n log n).
[[nodiscard]] std::vector<TextRange> intersectCodings(std::span<const Coding> codings, const QList<QUuid> &codeIDs);

/// The passages, clamped to their texts, in the order of `documents` and then of their locations; at the same location
/// in the order of `codings`. Codings of other documents and codes may be among `codings`. No codes, no result.
[[nodiscard]] QList<QueryResult> evaluate(
    const QuerySpec &spec, std::span<const Coding> codings, const QList<Document> &documents);

/// The query in a line, with the codes' present names.
[[nodiscard]] QString summary(const QuerySpec &spec, const QList<Code> &codes);

} // namespace CompoundQuery
