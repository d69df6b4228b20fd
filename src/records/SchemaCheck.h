#pragma once

class DatabaseQueue;

/// Whether a file is ours to write into. Each of these throws DatabaseError with what is wrong, and only reads.
namespace SchemaCheck {

/// Refuses a database that holds something and wasn't begun by Vorn's first migration. An empty one is nobody's.
void refuseForeign(DatabaseQueue &queue);

/// Refuses a database whose tables aren't able to hold records: to be asked once all migrations have run. What other
/// tools may add without harm is let through, such as further indexes, tables and columns.
void refuseUnfit(DatabaseQueue &queue);

} // namespace SchemaCheck
