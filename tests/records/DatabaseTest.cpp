#include "records/AppDatabase.h"
#include "records/Document.h"
#include "records/Project.h"
#include "records/database/DatabaseMigrator.h"
#include "records/database/Request.h"
#include "records/database/Row.h"
#include "records/database/TableChanges.h"
#include "support/Complaint.h"

#include <QFile>
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

qint64 projectCount(DatabaseQueue &queue)
{
    return queue.read([](Database &database) { return Project::all().fetchCount(database); });
}

} // namespace

TEST(StoredRecord, ComesBackAsItWasInTheFormsOfTheFile)
{
    const auto queue = AppDatabase::makeFreshQueue();
    const Project written = project(u"Étude 🙂"_s);
    queue->write([&](Database &database) { written.insert(database); });
    EXPECT_EQ(queue->read([](Database &database) { return Project::all().fetchOne(database); }), written);
    queue->read([](Database &database) {
        const auto rows = Row::fetchAll(database, "SELECT typeof(id) AS t, length(id) AS n, createdAt FROM project");
        EXPECT_EQ(rows.at(0).value<QString>("t"), u"blob"_s);
        EXPECT_EQ(rows.at(0).value<qint64>("n"), 16);
        EXPECT_EQ(rows.at(0).value<QString>("createdAt"), u"2026-03-01 09:05:07.042"_s);
        EXPECT_EQ(rows.at(0).value<QString>("nowhere"), std::nullopt);
    });
}

TEST(StoredRecord, AbsentOptionalIsNullAndEmptyTextIsNot)
{
    const auto queue = AppDatabase::makeFreshQueue();
    Document document;
    document.id = QUuid::createUuid();
    document.title = u""_s;
    document.text = QString(); // null in Qt, empty in the file
    document.addedAt = QDateTime(QDate(2026, 3, 1), QTime(9, 5), QTimeZone::utc());
    queue->write([&](Database &database) { document.insert(database); });
    const auto back = queue->read([](Database &database) { return Document::all().fetchOne(database); });
    EXPECT_EQ(back, document);
    EXPECT_EQ(queue->read([](Database &database) {
        return database.integer("SELECT COUNT(*) FROM document WHERE memo IS NULL AND text = ''");
    }),
        1);
}

TEST(StoredRecord, ThatCantBeDecodedIsAnErrorAndNoHalfRecord)
{
    for (const char *fault : {"UPDATE project SET id = x'0102'", "UPDATE project SET createdAt = 'yesterday'",
             "UPDATE project SET name = x'ff'", "ALTER TABLE project RENAME COLUMN name TO other"}) {
        const auto queue = AppDatabase::makeFreshQueue();
        queue->write([&](Database &database) {
            project(u"A"_s).insert(database);
            database.execute(fault);
        });
        EXPECT_THROW(queue->read([](Database &database) { return Project::all().fetchAll(database); }), DatabaseError)
            << fault;
    }
}

TEST(DatabaseQueue, RollsBackAWholeBodyThatFails)
{
    const auto queue = AppDatabase::makeFreshQueue();
    const Project twice = project(u"A"_s);
    EXPECT_THROW(queue->write([&](Database &database) {
        project(u"B"_s).insert(database);
        twice.insert(database);
        twice.insert(database);
    }),
        DatabaseError);
    EXPECT_EQ(projectCount(*queue), 0);
    queue->write([&](Database &database) { twice.insert(database); }); // and is ready for the next
    EXPECT_EQ(projectCount(*queue), 1);
}

TEST(DatabaseQueue, RefusesWritesInAReadAndEntriesFromWithin)
{
    const auto queue = AppDatabase::makeFreshQueue();
    EXPECT_THROW(queue->read([&](Database &database) { project(u"A"_s).insert(database); }), DatabaseError);
    EXPECT_THROW(queue->read([&](Database &) { static_cast<void>(projectCount(*queue)); }), DatabaseError);
    queue->write([&](Database &database) { project(u"A"_s).insert(database); });
    EXPECT_EQ(projectCount(*queue), 1);
}

TEST(DatabaseQueue, TellsAFailureWithTheStatementAndWithoutItsArguments)
{
    const auto queue = AppDatabase::makeFreshQueue();
    EXPECT_EQ(complaintAbout([&] {
        queue->write([](Database &database) {
            database.execute("INSERT INTO nowhere VALUES (?)", {ValueEncoding::encoded(u"secret"_s)});
        });
    }),
        u"no such table: nowhere - while executing `INSERT INTO nowhere VALUES (?)`"_s);
    EXPECT_EQ(complaintAbout([&] {
        queue->write([](Database &database) { database.execute("SELECT * FROM project WHERE name = \"A\""); });
    }),
        u"no such column: A - while executing `SELECT * FROM project WHERE name = \"A\"`"_s);
}

TEST(DatabaseQueue, RefusesTextThatIsNotExactlyOneStatement)
{
    const auto queue = AppDatabase::makeFreshQueue();
    const auto execute = [&](const QByteArray &sql) {
        queue->write([&](Database &database) { database.execute(sql); });
    };
    for (const QByteArray &sql : {QByteArray("DELETE FROM code; DELETE FROM project"), QByteArray("DELETE FROM code;;"),
             QByteArray("DELETE FROM code; -- and more"), QByteArray("DELETE FROM code\0 WHERE 0", 25),
             QByteArray("-- nothing"), QByteArray()})
        EXPECT_THROW(execute(sql), DatabaseError) << sql.constData();
    EXPECT_NO_THROW(execute("DELETE FROM code ;\n "));
}

TEST(DatabaseQueue, UpdatesOnlyWhatIsThereAndDeletesWithoutComplaint)
{
    const auto queue = AppDatabase::makeFreshQueue();
    const Project gone = project(u"A"_s);
    EXPECT_THROW(queue->write([&](Database &database) { gone.update(database); }), DatabaseError);
    EXPECT_FALSE(queue->write([&](Database &database) { return Project::deleteOne(database, gone.id); }));
    queue->write([&](Database &database) { gone.insert(database); });
    EXPECT_TRUE(queue->write([&](Database &database) { return Project::deleteOne(database, gone.id); }));
}

TEST(DatabaseQueue, KeepsTheRollbackJournalAndFailsAtOnceOnALockedFile)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"vorn.sqlite"_s);
    const auto queue = AppDatabase::openQueue(path);
    EXPECT_EQ(queue->read([](Database &database) {
        return Row::fetchAll(database, "PRAGMA journal_mode").at(0).value<QString>("journal_mode");
    }),
        u"delete"_s);
    EXPECT_EQ(
        QFile::permissions(path) & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther), QFile::Permissions());

    DatabaseQueue other(path);
    other.writeWithoutTransaction([](Database &database) { database.execute("BEGIN EXCLUSIVE"); });
    EXPECT_TRUE(complaintAbout([&] { static_cast<void>(projectCount(*queue)); }).startsWith(u"database is locked"_s));
    other.writeWithoutTransaction([](Database &database) { database.execute("ROLLBACK"); });
    EXPECT_EQ(projectCount(*queue), 0);
}

TEST(Migrations, BringEachStateOfAFileUpToDateAndLeaveUnknownOnesAlone)
{
    const auto schemaOf = [](DatabaseQueue &queue) {
        QByteArrayList lines;
        queue.read([&](Database &database) {
            database.forEachRow("SELECT name || sql FROM sqlite_master WHERE sql IS NOT NULL ORDER BY name", {},
                [&](const Statement &row) { lines.append(row.column(0).bytes.toByteArray()); });
        });
        return lines;
    };
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
        EXPECT_EQ(schemaOf(*queue), schemaOf(*AppDatabase::makeFreshQueue()));
        EXPECT_EQ(projectCount(*queue), statements.contains("DROP TABLE project") ? 0 : 1);
        EXPECT_EQ(queue->read([](Database &database) {
            return database.integer("SELECT COUNT(*) FROM grdb_migrations WHERE identifier <> 'later'");
        }),
            3);
    }
}

TEST(Migrations, RollBackTheOneThatFailsAndResumeAtIt)
{
    DatabaseQueue queue;
    bool fails = true;
    DatabaseMigrator migrator;
    migrator.registerMigration("first", [](Database &database) { database.execute("CREATE TABLE a (x)"); });
    migrator.registerMigration("second", [&](Database &database) {
        database.execute("CREATE TABLE b (x)");
        if (fails)
            database.execute("NONSENSE");
    });
    EXPECT_THROW(migrator.migrate(queue), DatabaseError);
    const auto tables = [&] {
        return queue.read([](Database &database) {
            return database.integer("SELECT COUNT(*) FROM sqlite_master WHERE name IN ('a', 'b')");
        });
    };
    EXPECT_EQ(tables(), 1);
    fails = false;
    migrator.migrate(queue);
    EXPECT_EQ(tables(), 2);
    EXPECT_EQ(queue.read([](Database &database) { return database.integer("PRAGMA foreign_keys"); }), 1);
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
}
