#pragma once

class DatabaseQueue;

/// Whether a file is ours to write into. Each of these throws DatabaseError with what is wrong.
namespace SchemaCheck {

/// Refuses a database that holds something and wasn't begun by Vorn's first migration. An empty one is nobody's. Only
/// reads.
void refuseForeign(DatabaseQueue &queue);

/// Refuses tables that aren't able to hold records, by their definitions and by trying: `replayed` is the schema of a
/// file in memory, on which all migrations have run. What other tools may add without harm is let through, such as
/// further indexes, tables and columns.
void refuseUnfit(DatabaseQueue &replayed);

} // namespace SchemaCheck
