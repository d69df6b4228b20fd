#pragma once

#include <memory>

class DatabaseQueue;

/// The tables of a database once more, in memory, to be tried out where nothing can be lost.
namespace SchemaReplay {

/// A database in memory with the tables of `queue` that bear the names of ours, their indexes, the tables that refer to
/// them, and the names of the migrations that have run; with no other rows, no triggers and no views. Rows of `queue`
/// aren't read. Throws DatabaseError for tables that can't be made again, as for a function that isn't there: their
/// rows couldn't be written either.
[[nodiscard]] std::unique_ptr<DatabaseQueue> inMemory(DatabaseQueue &queue);

} // namespace SchemaReplay
