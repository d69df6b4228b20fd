#pragma once

#include <QByteArrayList>
#include <QString>

class DatabaseQueue;

/// Tells our library from other files before anything is written. All of it only reads and throws DatabaseError with
/// the reason for a refusal.
namespace SchemaGuard {

/// Refuses another program's database that SQLite would change by opening it, because a killed program left a journal
/// or a log beside it. Lets our own library through, to be rolled back in place.
void refuseUnfinishedForeign(const QString &path);

/// The names of the migrations that have run on a file; none for an empty one. Refuses a database that holds something
/// and wasn't begun by our first migration, `first`.
[[nodiscard]] QByteArrayList appliedMigrations(DatabaseQueue &file, const QByteArray &first);

/// Compares our tables with those of `model`, a fresh database on which the same migrations have run. Refuses what
/// would lose or change records or make each write fail; lets through what other tools may add without harm, such as
/// indexes, tables and nullable columns.
void refuseUnlike(DatabaseQueue &model, DatabaseQueue &file);

} // namespace SchemaGuard
