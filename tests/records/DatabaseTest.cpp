#include "records/AppDatabase.h"
#include "records/Document.h"
#include "records/Project.h"
#include "records/database/DatabaseMigrator.h"
#include "records/database/Request.h"
#include "records/database/Row.h"
#include "records/database/TableChanges.h"
#include "support/Complaint.h"

#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

Project project(const QString &name)
{
    Project result;
    result.id = QUuid::createUuid();
    result.name = name;
    result.createdAt = result.modifiedAt = QDateTime(QDate(2026, 3, 1), QTime(9, 5, 7, 42), QTimeZone::utc());
    return result;
}

qint64 integer(DatabaseQueue &queue, QByteArrayView sql)
{
    return queue.read([&](Database &database) { return database.integer(sql); });
}

QByteArrayList firstColumn(DatabaseQueue &queue, QByteArrayView sql)
{
    QByteArrayList values;
    queue.read([&](Database &database) {
        database.forEachRow(sql, {}, [&](const Statement &row) { values.append(row.column(0).bytes.toByteArray()); });
    });
    return values;
}

constexpr auto countProjects = "SELECT COUNT(*) FROM project";

} // namespace

TEST(StoredRecord, ComesBackAsItWasInTheFormsOfTheFile)
{
    const auto queue = AppDatabase::makeFreshQueue();
    const Project written = project(u"Étude 🙂"_s);
    Document document;
    document.id = QUuid::createUuid();
    document.title = u""_s;
    document.text = QString(); // null in Qt, empty in the file
    document.addedAt = written.createdAt;
    queue->write([&](Database &database) {
        written.insert(database);
        document.insert(database);
    });
    queue->read([&](Database &database) {
        EXPECT_EQ(Project::all().fetchOne(database), written);
        EXPECT_EQ(Document::all().fetchOne(database), document);
        const auto rows = Row::fetchAll(database, "SELECT typeof(id) AS t, length(id) AS n, createdAt FROM project");
        EXPECT_EQ(rows.at(0).value<QString>("t"), u"blob"_s);
        EXPECT_EQ(rows.at(0).value<qint64>("n"), 16);
        EXPECT_EQ(rows.at(0).value<QString>("createdAt"), u"2026-03-01 09:05:07.042"_s);
        EXPECT_EQ(rows.at(0).value<QString>("nowhere"), std::nullopt);
    });
    EXPECT_EQ(integer(*queue, "SELECT COUNT(*) FROM document WHERE memo IS NULL AND text = ''"), 1);
}

TEST(StoredRecord, IsUpdatedOnlyIfItIsThereAndDeletedWithoutComplaint)
{
    const auto queue = AppDatabase::makeFreshQueue();
    const Project gone = project(u"A"_s);
    EXPECT_THROW(queue->write([&](Database &database) { gone.update(database); }), DatabaseError);
    EXPECT_THROW(queue->write([&](Database &database) { gone.update(database, {"name"}); }), DatabaseError);
    EXPECT_FALSE(queue->write([&](Database &database) { return Project::deleteOne(database, gone.id); }));
    queue->write([&](Database &database) { gone.insert(database); });
    EXPECT_TRUE(queue->write([&](Database &database) { return Project::deleteOne(database, gone.id); }));
}

TEST(DatabaseQueue, RollsBackAWholeBodyThatFailsAndRefusesWhatItIsNotFor)
{
    const auto queue = AppDatabase::makeFreshQueue();
    const Project twice = project(u"A"_s);
    EXPECT_THROW(queue->write([&](Database &database) {
        project(u"B"_s).insert(database);
        twice.insert(database);
        twice.insert(database);
    }),
        DatabaseError);
    EXPECT_EQ(integer(*queue, countProjects), 0);
    EXPECT_THROW(queue->read([&](Database &database) { twice.insert(database); }), DatabaseError);
    EXPECT_THROW(queue->read([&](Database &) { std::ignore = integer(*queue, countProjects); }), DatabaseError);
    constexpr auto pair = "SELECT 1 UNION ALL SELECT 2";
    int rows = 0;
    queue->write([&](Database &database) {
        twice.insert(database); // it is ready for the next
        database.forEachRow(
            pair, {}, [&](const Statement &) { database.forEachRow(pair, {}, [&](const Statement &) { ++rows; }); });
    });
    EXPECT_EQ(rows, 4) << "a statement that is running was begun again";
    EXPECT_EQ(integer(*queue, countProjects), 1);
}

TEST(DatabaseQueue, TellsAFailureWithTheStatementAndWithoutItsArguments)
{
    const auto queue = AppDatabase::makeFreshQueue();
    const auto complaint = [&](const QByteArray &sql, const Arguments &arguments = {}) {
        return complaintAbout([&] { queue->write([&](Database &database) { database.execute(sql, arguments); }); });
    };
    EXPECT_EQ(complaint("INSERT INTO nowhere VALUES (?)", {ValueEncoding::encoded(u"secret"_s)}),
        u"no such table: nowhere - while executing `INSERT INTO nowhere VALUES (?)`"_s);
    EXPECT_EQ(complaint("SELECT * FROM project WHERE name = \"A\""), // no text, in double quotes
        u"no such column: A - while executing `SELECT * FROM project WHERE name = \"A\"`"_s);
    for (const QByteArray &sql : {QByteArray("DELETE FROM code; DELETE FROM project"), QByteArray("DELETE FROM code;;"),
             QByteArray("DELETE FROM code; -- and more"), QByteArray("DELETE FROM code\0 WHERE 0", 25),
             QByteArray("-- nothing"), QByteArray()})
        EXPECT_NE(complaint(sql), QString()) << sql.constData();
    EXPECT_EQ(complaint("DELETE FROM code ;\n "), QString());
    EXPECT_NE(complaint("DELETE FROM code WHERE id = ?"), QString());
}

TEST(Migrations, BringEachStateOfAFileUpToDateAndLeaveUnknownOnesAlone)
{
    constexpr auto schema = "SELECT name || sql FROM sqlite_master WHERE sql IS NOT NULL ORDER BY name";
    const QByteArrayList undone[] = {
        {"INSERT INTO grdb_migrations VALUES ('later')"},
        {"DELETE FROM grdb_migrations WHERE identifier = 'memos'", "ALTER TABLE code DROP COLUMN memo",
            "ALTER TABLE document DROP COLUMN memo"},
        {"DELETE FROM grdb_migrations WHERE identifier <> 'createCore'", "ALTER TABLE document DROP COLUMN memo",
            "DROP TABLE code", "DROP TABLE coding"},
        {"DELETE FROM grdb_migrations", "DROP TABLE code", "DROP TABLE coding", "DROP TABLE document",
            "DROP TABLE project"},
    };
    for (const QByteArrayList &statements : undone) {
        SCOPED_TRACE(statements.join("; ").constData());
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"old.sqlite"_s);
        AppDatabase::openQueue(path)->write([&](Database &database) {
            project(u"kept"_s).insert(database);
            for (const QByteArray &statement : statements)
                database.execute(statement);
        });
        const auto queue = AppDatabase::openQueue(path);
        EXPECT_EQ(firstColumn(*queue, schema), firstColumn(*AppDatabase::makeFreshQueue(), schema));
        EXPECT_EQ(integer(*queue, countProjects), statements.contains("DROP TABLE project") ? 0 : 1);
        EXPECT_EQ(integer(*queue, "SELECT COUNT(*) FROM grdb_migrations WHERE identifier <> 'later'"), 3);
        EXPECT_EQ(firstColumn(*queue, "PRAGMA journal_mode"), QByteArrayList{"delete"});
    }
}

TEST(Migrations, RollBackTheOneThatFailsAndResumeAtIt)
{
    DatabaseQueue queue;
    QByteArray last = "SELECT 1";
    DatabaseMigrator migrator;
    migrator.registerMigration("first", [](Database &database) { database.execute("CREATE TABLE a (x PRIMARY KEY)"); });
    migrator.registerMigration("second", [&](Database &database) {
        database.execute("CREATE TABLE b (x REFERENCES a)");
        database.execute("INSERT INTO b VALUES (7)");
        database.execute(last);
    });
    constexpr auto tables = "SELECT name FROM sqlite_master WHERE name IN ('a', 'b') ORDER BY name";
    EXPECT_EQ(complaintAbout([&] { migrator.migrate(queue); }), u"FOREIGN KEY constraint failed"_s);
    EXPECT_EQ(firstColumn(queue, tables), QByteArrayList{"a"});
    last = "INSERT INTO a VALUES (7)";
    migrator.migrate(queue);
    EXPECT_EQ(firstColumn(queue, tables), (QByteArrayList{"a", "b"}));
    EXPECT_EQ(integer(queue, "PRAGMA foreign_keys"), 1);
}

TEST(TableChanges, NamesTheRowsOfItsTableAndEverythingAfterAForeignChange)
{
    const QTemporaryDir folder;
    const auto queue = AppDatabase::openQueue(folder.filePath(u"vorn.sqlite"_s));
    TableChanges changes(*queue, "project");
    const auto take = [&] { return queue->read([&](Database &database) { return changes.take(database); }); };
    EXPECT_TRUE(take().everything);
    EXPECT_TRUE(take().isEmpty());

    Project first = project(u"A"_s);
    queue->write([&](Database &database) { first.insert(database); });
    EXPECT_EQ(take().rowIDs, std::vector<qint64>{1});
    queue->write([&](Database &database) {
        first.name = u"B"_s;
        first.update(database);
        Project::all().deleteAll(database);
        database.execute("INSERT INTO grdb_migrations VALUES ('other table')");
    });
    EXPECT_EQ(take().rowIDs, std::vector<qint64>{1});

    DatabaseQueue other(folder.filePath(u"vorn.sqlite"_s));
    other.write([&](Database &database) { first.insert(database); });
    EXPECT_TRUE(take().everything);
    EXPECT_TRUE(take().isEmpty());
    queue->write([](Database &database) { database.execute("DROP TABLE code"); });
    EXPECT_TRUE(take().everything);
    changes.forget();
    EXPECT_TRUE(take().everything);
}
