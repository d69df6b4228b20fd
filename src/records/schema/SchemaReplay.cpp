#include "records/schema/SchemaReplay.h"

#include "records/database/DatabaseError.h"
#include "records/database/DatabaseQueue.h"
#include "records/schema/SchemaRefusal.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto migrations = "grdb_migrations";

// Tables and views, whose names are also those of their tables, and behind them the indexes. An index that a constraint
// has made comes with its table.
constexpr auto definitions = R"(
    WITH ours(name) AS (VALUES ('grdb_migrations'), ('project'), ('document'), ('code'), ('coding'))
    SELECT tbl_name, sql FROM sqlite_master AS entry
    WHERE type <> 'trigger' AND sql IS NOT NULL AND (lower(tbl_name) IN (SELECT name FROM ours)
        OR EXISTS (SELECT 1 FROM pragma_foreign_key_list(entry.name)
            WHERE lower("table") IN (SELECT name FROM ours)))
    ORDER BY type = 'index')";

/// A file may hold whatever its maker liked, and its check is to end soon: much less than this is needed.
constexpr int maxDefinitions = 500;
constexpr int maxMigrations = 1'000;
constexpr int longestValue = 50'000; // bytes
constexpr int longestPattern = 1'000; // bytes

void setLimits(sqlite3 *connection)
{
    sqlite3_limit(connection, SQLITE_LIMIT_LENGTH, longestValue);
    sqlite3_limit(connection, SQLITE_LIMIT_SQL_LENGTH, longestValue);
    sqlite3_limit(connection, SQLITE_LIMIT_LIKE_PATTERN_LENGTH, longestPattern);
}

void makeAlike(Database &source, Database &replayed)
{
    source.forEachRow("PRAGMA encoding", {}, [&](const Statement &row) {
        replayed.execute("PRAGMA encoding = '" + row.column(0).bytes.toByteArray() + '\'');
    });
    // What was once written with them into a file is still read with them.
    sqlite3_db_config(replayed.connection(), SQLITE_DBCONFIG_DQS_DDL, 1, nullptr);
}

/// SQLite stores these words in this spelling. Nothing else is run: a view or a virtual table is code.
bool makesPlainTableOrIndex(QByteArrayView sql)
{
    return sql.startsWith("CREATE TABLE ") || sql.startsWith("CREATE INDEX ") || sql.startsWith("CREATE UNIQUE INDEX ");
}

void makeTables(Database &source, Database &replayed)
{
    int count = 0;
    source.forEachRow(definitions, {}, [&](const Statement &row) {
        const QByteArray table = row.column(0).bytes.toByteArray();
        const QByteArray sql = row.column(1).bytes.toByteArray();
        if (!makesPlainTableOrIndex(sql))
            SchemaRefusal::refuse(table, u"is missing or no plain table"_s);
        if (++count > maxDefinitions)
            SchemaRefusal::refuse(table, u"is one of too many tables and indexes"_s);
        try {
            replayed.execute(sql);
        } catch (const DatabaseError &trouble) {
            SchemaRefusal::refuse(table, trouble);
        }
    });
}

void copyMigrations(Database &source, Database &replayed)
{
    if (source.integer("SELECT COUNT(*) FROM sqlite_master WHERE name = ?", {TextValue{migrations}}) == 0)
        return;
    source.forEachRow(
        "SELECT identifier FROM grdb_migrations LIMIT ?", {qint64(maxMigrations)}, [&](const Statement &row) {
            replayed.execute("INSERT INTO grdb_migrations (identifier) VALUES (?)", {ownedValue(row.column(0))});
        });
}

} // namespace

std::unique_ptr<DatabaseQueue> SchemaReplay::inMemory(DatabaseQueue &queue)
{
    auto result = std::make_unique<DatabaseQueue>();
    queue.read([&](Database &source) {
        result->writeWithoutTransaction([&](Database &replayed) {
            setLimits(replayed.connection());
            makeAlike(source, replayed);
            DatabaseQueue::Transaction transaction(replayed);
            makeTables(source, replayed);
            copyMigrations(source, replayed);
            transaction.commit();
        });
    });
    return result;
}
