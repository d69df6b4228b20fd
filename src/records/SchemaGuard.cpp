#include "records/SchemaGuard.h"

#include "records/Code.h"
#include "records/Coding.h"
#include "records/Document.h"
#include "records/Project.h"
#include "records/database/DatabaseError.h"
#include "records/database/DatabaseQueue.h"

#include <QFileInfo>
#include <QMap>
#include <QUrl>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array tables{
    "grdb_migrations", Project::databaseTable, Document::databaseTable, Code::databaseTable, Coding::databaseTable};

/// A row for each property of the table ?1: its words, and whether records are as safe with it as without it. No pragma
/// tells of clauses such as PRIMARY KEY ON CONFLICT REPLACE, by which one record would replace another.
constexpr auto propertyQuery = R"(
    WITH clauses(word) AS (VALUES ('CHECK'), ('COLLATE'), ('CONFLICT'))
    SELECT 'the column “' || name || '” ' || upper(type) || iif("notnull", ' NOT NULL', '')
            || iif(pk, ' PRIMARY KEY', '') || iif(hidden, ' GENERATED', ''),
        pk = 0 AND ("notnull" = 0 OR dflt_value IS NOT NULL) AND lower(name) <> 'rowid'
    FROM pragma_table_xinfo(?1)
    UNION ALL
    SELECT 'the unique key ' || group_concat('“' || ifnull(key.name, '…') || '”', ', '),
        max(ifnull(key.name = 'id', 0))
    FROM pragma_index_list(?1) AS list, pragma_index_info(list.name) AS key WHERE list."unique" GROUP BY list.name
    UNION ALL
    SELECT 'a reference to “' || "table" || '”', 0 FROM pragma_foreign_key_list(?1)
    UNION ALL
    SELECT 'a ' || word || ' clause', 0 FROM sqlite_master, clauses
    WHERE type = 'table' AND name = ?1 AND upper(sql) GLOB '*[^A-Z0-9_]' || word || '[^A-Z0-9_]*')";

using Properties = QMap<QString, bool>; ///< from a property's words to whether it is harmless

[[noreturn]] void refuse(const QString &reason)
{
    throw DatabaseError::misuse(u"The file isn't a library of Vorn: %1."_s.arg(reason));
}

[[noreturn]] void refuse(const char *table, const QString &fault)
{
    refuse(u"its table “%1” %2"_s.arg(QLatin1StringView(table), fault));
}

/// SQLite stores these first words in this spelling. Views and virtual tables aren't even asked for their columns:
/// they are code, and may never end.
bool isPlainTable(Database &database, const char *name)
{
    return database.integer(
               "SELECT COUNT(*) FROM sqlite_master WHERE name = ? AND sql LIKE 'CREATE TABLE %'", {TextValue{name}})
        > 0;
}

/// Refuses a table without row numbers, and one whose indexes need orders or functions that aren't there.
void refuseUnlessWritable(Database &database, const char *table)
{
    try {
        const Statement neverRun(database.connection(), QByteArray("DELETE FROM ") + table + " WHERE rowid = 0");
    } catch (const DatabaseError &error) {
        refuse(table, u"can't be written: "_s + error.description());
    }
}

Properties propertiesOf(Database &database, const char *table)
{
    Properties result;
    if (!isPlainTable(database, table))
        return result;
    refuseUnlessWritable(database, table);
    database.forEachRow(propertyQuery, {TextValue{table}}, [&](const Statement &row) {
        result.insert(QString::fromUtf8(row.column(0).bytes), row.column(1).integer != 0);
    });
    return result;
}

void refuseUnlike(const char *table, const Properties &expected, const Properties &found)
{
    if (found.isEmpty() && !expected.isEmpty())
        refuse(table, u"is missing or no plain table"_s);
    for (const auto &[property, isHarmless] : expected.asKeyValueRange()) {
        if (!found.contains(property))
            refuse(table, u"lacks "_s + property);
    }
    for (const auto &[property, isHarmless] : found.asKeyValueRange()) {
        if (!isHarmless && !expected.contains(property))
            refuse(table, u"has "_s + property);
    }
}

/// Whether the file is clearly not ours, without what its journal or log would make of it. A half-written schema may
/// be unreadable and tells nothing. A log's file holds our table of migrations at least, since we never made a log.
bool isForeignAsItStands(const QString &file, bool hasLog)
{
    const QByteArray address = QUrl::fromLocalFile(file).toEncoded() + "?immutable=1"; // looks at nothing beside it
    sqlite3 *connection = nullptr;
    sqlite3_open_v2(address.constData(), &connection, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr);
    Database database(connection);
    try {
        return !isPlainTable(database, "grdb_migrations")
            && (hasLog || database.integer("SELECT COUNT(*) FROM sqlite_master") > 0);
    } catch (const DatabaseError &) {
        return false;
    }
}

} // namespace

void SchemaGuard::refuseUnfinishedForeign(const QString &path)
{
    const QFileInfo file(QFileInfo(path).canonicalFilePath()); // SQLite's files lie beside it, not beside a link to it
    if (!file.isFile()) // reading a pipe would never end
        return;
    const bool hasLog = QFileInfo::exists(file.filePath() + u"-wal"_s);
    const bool hasJournal = QFileInfo(file.filePath() + u"-journal"_s).size() > 0;
    if ((hasLog || hasJournal) && isForeignAsItStands(file.filePath(), hasLog))
        refuse(u"another program made it"_s);
}

QByteArrayList SchemaGuard::appliedMigrations(DatabaseQueue &file, const QByteArray &first)
{
    return file.read([&](Database &database) {
        QByteArrayList applied;
        if (database.integer("SELECT COUNT(*) FROM sqlite_master") == 0)
            return applied;
        if (!isPlainTable(database, "grdb_migrations")
            || database.integer("SELECT COUNT(*) FROM pragma_table_xinfo('grdb_migrations') WHERE name = 'identifier'")
                == 0)
            refuse(u"another program made it"_s);
        database.forEachRow("SELECT identifier FROM grdb_migrations", {},
            [&](const Statement &row) { applied.append(row.column(0).bytes.toByteArray()); });
        // A first start that was killed may have left the table of migrations alone.
        if (!applied.contains(first)
            && database.integer("SELECT COUNT(*) FROM sqlite_master WHERE tbl_name <> 'grdb_migrations'") > 0)
            refuse(u"another program made it"_s);
        return applied;
    });
}

void SchemaGuard::refuseUnlike(DatabaseQueue &model, DatabaseQueue &file)
{
    for (const char *table : tables) {
        const auto properties = [table](Database &database) { return propertiesOf(database, table); };
        const Properties expected = model.read(properties);
        ::refuseUnlike(table, expected, file.read(properties));
    }
}
