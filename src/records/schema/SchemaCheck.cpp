#include "records/schema/SchemaCheck.h"

#include "records/Code.h"
#include "records/Coding.h"
#include "records/Document.h"
#include "records/Project.h"
#include "records/database/DatabaseQueue.h"
#include "records/schema/RecordProbe.h"
#include "records/schema/SchemaRefusal.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

using SchemaRefusal::refuse;

constexpr auto migrations = "grdb_migrations";

bool isTrue(Database &database, QByteArrayView question, QByteArrayView table)
{
    return database.integer(question, {TextValue{table.toByteArray()}}) != 0;
}

/// The columns that can be written, and whether a row must name them.
QHash<QByteArray, bool> columnsOf(Database &database, QByteArrayView table)
{
    QHash<QByteArray, bool> columns;
    database.forEachRow("SELECT name, \"notnull\" AND dflt_value IS NULL FROM pragma_table_xinfo(?) WHERE hidden = 0",
        {TextValue{table.toByteArray()}},
        [&](const Statement &row) { columns.insert(row.column(0).bytes.toByteArray(), row.column(1).integer != 0); });
    return columns;
}

template <typename R>
void checkColumns(Database &database)
{
    QHash<QByteArray, bool> columns = columnsOf(database, R::databaseTable);
    const auto check = [&](const char *name) {
        if (!columns.remove(name))
            refuse(R::databaseTable, u"has no column “%1” to write into"_s.arg(QString::fromUtf8(name)));
    };
    std::apply([&](const auto &...field) { (check(field.name), ...); }, R::databaseColumns());
    if (const QByteArray further = columns.key(true); !further.isEmpty())
        refuse(R::databaseTable, u"wants “%1” in each row"_s.arg(QString::fromUtf8(further)));
}

/// Passages could go without a word where deleting or adding one row takes others along, or where a row is refused
/// because of another. Identifiers differ anyway.
void checkSideEffects(Database &database, QByteArrayView table)
{
    const Arguments name{TextValue{table.toByteArray()}};
    if (isTrue(database, "SELECT COUNT(*) FROM pragma_foreign_key_list(?)", table))
        refuse(table, u"is tied to other tables"_s);
    database.forEachRow("SELECT (SELECT group_concat(ifnull(name, '?'), ', ') FROM pragma_index_info(list.name)) "
                        "FROM pragma_index_list(?) AS list WHERE list.\"unique\" "
                        "AND NOT EXISTS (SELECT 1 FROM pragma_index_info(list.name) WHERE name = 'id')",
        name, [&](const Statement &row) {
            refuse(table, u"takes each value of “%1” only once"_s.arg(QString::fromUtf8(row.column(0).bytes)));
        });
    // A key that is the row's number has no index.
    if (isTrue(database, "SELECT COUNT(*) FROM pragma_table_xinfo(?) WHERE pk > 0", table)
        && !isTrue(database, "SELECT COUNT(*) FROM pragma_index_list(?) WHERE origin = 'pk'", table))
        refuse(table, u"has a number for its key"_s);
}

template <typename R>
void checkTable(Database &database)
{
    constexpr auto table = R::databaseTable;
    // Views can't be written, the rows of some tables have no numbers to be followed by, and strict ones take no
    // identifiers.
    if (!isTrue(database,
            "SELECT COUNT(*) FROM pragma_table_list(?) WHERE schema = 'main' AND type = 'table' AND NOT wr AND NOT "
            "strict",
            table))
        refuse(table, u"is missing or no plain table"_s);
    if (isTrue(database, "SELECT COUNT(*) FROM pragma_table_xinfo(?) WHERE lower(name) = 'rowid'", table))
        refuse(table, u"hides the numbers of its rows"_s);
    checkColumns<R>(database);
    checkSideEffects(database, table);
}

} // namespace

void SchemaCheck::refuseForeign(DatabaseQueue &queue)
{
    queue.read([](Database &database) {
        if (database.integer("SELECT COUNT(*) FROM sqlite_master") == 0)
            return;
        if (!isTrue(database,
                "SELECT COUNT(*) FROM sqlite_master AS entry, pragma_table_info(entry.name) AS column "
                "WHERE entry.name = ? AND entry.sql LIKE 'CREATE TABLE %' AND column.name = 'identifier'",
                migrations))
            refuse(u"another program made it."_s);
        // A first start that was cut off may have left the table of migrations alone.
        if (isTrue(database, "SELECT COUNT(*) FROM sqlite_master WHERE tbl_name <> ?", migrations)
            && !isTrue(database, "SELECT COUNT(*) FROM grdb_migrations WHERE identifier = ?", "createCore"))
            refuse(u"another program made it."_s);
    });
}

void SchemaCheck::refuseUnfit(DatabaseQueue &replayed)
{
    replayed.read([](Database &database) {
        checkTable<Project>(database);
        checkTable<Document>(database);
        checkTable<Code>(database);
        checkTable<Coding>(database);
    });
    RecordProbe::refuseUnlessKept(replayed);
}
