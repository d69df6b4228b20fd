#pragma once

class DatabaseQueue;

/// Whether tables keep records as they are.
namespace RecordProbe {

/// Writes, reads, changes and deletes records of each kind in `queue`, whose tables must be empty and whose rows nobody
/// needs, and leaves none behind. Throws DatabaseError, with the table and what is wrong with it, unless all came back
/// as it was written, no identifier was taken twice and each change was told. What a condition on values lets through
/// can't be proven: the outermost values stand for all.
void refuseUnlessKept(DatabaseQueue &queue);

} // namespace RecordProbe
