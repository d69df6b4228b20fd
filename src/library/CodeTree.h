#pragma once

#include "records/Code.h"

#include <QList>

/// The tree that a flat list of codes makes through `Code::parentID`. All functions end on any data: missing parents,
/// cycles and chains of any length.
namespace CodeTree {

/// The greatest depth that `ordered` gives; what lies deeper stands flat at the end.
constexpr qint64 maxDepth = 4;

/// Depth first, siblings oldest first. Every code stands exactly once: those that lie deeper than `maxDepth`, with an
/// unknown parent or on a cycle come last, at depth 0, in list order. O(n log n).
[[nodiscard]] QList<FlatCode> ordered(const QList<Code> &codes);

/// Whether `child` is `parent` or one of the first 50 codes met on the way up from it. O(n).
[[nodiscard]] bool isAtOrAbove(const QUuid &child, const QUuid &parent, const QList<Code> &codes);

/// The codes of `codes` that change when `source` is merged into `target`, as they are afterwards: the children of
/// `source` move to `target`. A target that lies below the source takes the source's place, so that no code becomes
/// its own ancestor. `source` itself isn't among them. O(n).
[[nodiscard]] QList<Code> movedByMerge(const Code &source, const Code &target, const QList<Code> &codes);

/// The children of `code` as they are when it is deleted: one level up. O(n).
[[nodiscard]] QList<Code> movedByDelete(const Code &code, const QList<Code> &children);

} // namespace CodeTree
