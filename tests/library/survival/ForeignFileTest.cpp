#include "library/survival/Isolated.h"
#include "library/survival/Workplace.h"
#include "platform/AtomicFile.h"
#include "platform/LocalizedError.h"
#include "records/AppDatabase.h"

#include <QCryptographicHash>
#include <QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Something that stands where the library should be, or has it.
struct ForeignFile {
    const char *name;
    /// Puts it there; what it returns lives as long as the test needs it.
    std::function<std::shared_ptr<void>(const QString &path)> put;
    const char *complaint; ///< its beginning
    bool needsAnotherUser = false; ///< since root may do everything
};

ForeignFile bytes(const char *name, const QByteArray &content)
{
    return {name,
        [content](const QString &path) {
            AtomicFile::write(path, content);
            return nullptr;
        },
        "file is not a database"};
}

ForeignFile database(const char *name, const QByteArrayList &statements, const char *complaint)
{
    return {name,
        [statements](const QString &path) {
            QFile::remove(path);
            DatabaseQueue queue(path);
            queue.writeWithoutTransaction([&](Database &database) {
                for (const QByteArray &statement : statements)
                    database.execute(statement);
            });
            return nullptr;
        },
        complaint};
}

/// What a killed program has left in `companion` beside the file isn't in the file yet, or must come out of it again.
ForeignFile unfinished(const char *name, const char *companion, const QByteArrayList &statements, const char *complaint)
{
    return {name,
        [=](const QString &path) {
            QFile::remove(path);
            runAndBeKilled(path, statements);
            EXPECT_GT(QFileInfo(path + QLatin1StringView(companion)).size(), 0);
            return nullptr;
        },
        complaint};
}

constexpr auto anotherProgram = "The file isn't a library of Vorn: another program made it.";

std::vector<ForeignFile> strangers()
{
    return {
        bytes("Letter", "Dear diary, this is no database, however long it may be."),
        bytes("TwoBytes", "no"),
        bytes("Noise", QByteArray("\x8F\x13\0\xE5 encrypted", 14).repeated(1'000)),
        database(
            "Database", {"CREATE TABLE bookmarks (url TEXT)", "INSERT INTO bookmarks VALUES ('mine')"}, anotherProgram),
        database("DatabaseWithALog",
            {"PRAGMA journal_mode = WAL", "CREATE TABLE bookmarks (url TEXT)", "INSERT INTO bookmarks VALUES ('mine')"},
            anotherProgram),
        database("DatabaseWithTablesOfOurNames",
            {"CREATE TABLE project (id)", "CREATE TABLE document (id)", "CREATE TABLE code (id)",
                "CREATE TABLE coding (id)"},
            anotherProgram),
        database("DatabaseWithMigrations",
            {"CREATE TABLE grdb_migrations (identifier TEXT NOT NULL PRIMARY KEY)",
                "INSERT INTO grdb_migrations VALUES ('v1')", "CREATE TABLE player (name)"},
            anotherProgram),
        database("DatabaseWithOurFirstMigration",
            {"CREATE TABLE grdb_migrations (identifier TEXT NOT NULL PRIMARY KEY)",
                "INSERT INTO grdb_migrations VALUES ('createCore'), ('v2')",
                "CREATE TABLE document (id TEXT, name TEXT)", "CREATE TABLE photo (x)"},
            "The file isn't a library of Vorn: its table “project” is missing or no plain table."),
        database("DatabaseWithOurMigrationsAndACodebook",
            {"CREATE TABLE grdb_migrations (identifier TEXT NOT NULL PRIMARY KEY)",
                "INSERT INTO grdb_migrations VALUES ('createCore'), ('codes')",
                "CREATE TABLE code (id TEXT, name TEXT)", "CREATE TABLE document (id TEXT, name TEXT)"},
            "The file isn't a library of Vorn: its table “project” is missing or no plain table."),
        database("DatabaseWithOtherMigrations", {"CREATE TABLE grdb_migrations (version)"}, anotherProgram),
        database("MigrationsWithoutEnd",
            {"CREATE VIEW grdb_migrations AS WITH RECURSIVE n(identifier) AS (SELECT 'v' UNION ALL SELECT identifier "
             "FROM n) SELECT identifier FROM n"},
            anotherProgram),
        unfinished("DatabaseWithAnUnfinishedLog", "-wal",
            {"PRAGMA journal_mode = WAL", "CREATE TABLE bookmarks (url TEXT)", "INSERT INTO bookmarks VALUES ('mine')"},
            anotherProgram),
        unfinished("DatabaseWithAnUnfinishedChange", "-journal",
            {"CREATE TABLE bookmarks (url TEXT)", "INSERT INTO bookmarks VALUES (zeroblob(100000))",
                "PRAGMA cache_size = 1", "BEGIN", "UPDATE bookmarks SET url = randomblob(100000)"},
            anotherProgram),
        {"Folder",
            [](const QString &path) {
                QFile::remove(path);
                QDir().mkpath(path);
                return nullptr;
            },
            "unable to open database file"},
        {"Pipe",
            [](const QString &path) {
                QFile::remove(path);
                ::mkfifo(QFile::encodeName(path).constData(), 0600);
                return nullptr;
            },
            "disk I/O error"},
        {"FileForReadingOnly",
            [](const QString &path) {
                QFile::setPermissions(path, QFile::Permissions(0x4444));
                return nullptr;
            },
            "The file may only be read, and Vorn must be able to write it.", true},
        {"FileOfALaterFormat",
            [](const QString &path) {
                QByteArray content = AtomicFile::readFile(path);
                content[18] = 3; // who knows less may read and not write
                AtomicFile::write(path, content);
                return nullptr;
            },
            "The file may only be read, and Vorn must be able to write it."},
        {"FileThatAnotherProgramHasLocked",
            [](const QString &path) {
                auto other = std::make_shared<DatabaseQueue>(path);
                other->writeWithoutTransaction(
                    [](Database &database) { database.execute("BEGIN EXCLUSIVE TRANSACTION"); });
                return other;
            },
            "database is locked"},
    };
}

/// Names, and of files what they hold.
QStringList contentsOf(const QString &folder)
{
    QStringList lines;
    for (const QFileInfo &each : QDir(folder).entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
        const QByteArray content = each.isFile() ? AtomicFile::readFile(each.filePath()) : QByteArray();
        const QByteArray hash = QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex();
        lines.append(each.fileName() + u' ' + QString::fromLatin1(hash));
    }
    return lines;
}

class Start : public testing::TestWithParam<ForeignFile> { };

} // namespace

TEST_P(Start, SaysWhyItCantUseWhatStandsThereAndLeavesItAsItIs)
{
    if (GetParam().needsAnotherUser && ::geteuid() != 0)
        GTEST_SKIP() << "only root may be somebody else";
    Workplace place;
    place.restoreLibrary();
    const auto held = GetParam().put(place.libraryFile());
    const QStringList before = contentsOf(place.library());
    const Ending ending = inProcessOfItsOwn([&] {
        if (GetParam().needsAnotherUser)
            std::ignore = ::setuid(65'534);
        try {
            std::ignore = AppDatabase::openQueue(place.libraryFile());
        } catch (const LocalizedError &error) {
            return error.description();
        }
        return u"opened"_s;
    });
    EXPECT_EQ(ending.fault, "");
    EXPECT_THAT(ending.result.toStdString(), testing::StartsWith(GetParam().complaint));
    EXPECT_EQ(contentsOf(place.library()), before);
}

INSTANTIATE_TEST_SUITE_P(, Start, testing::ValuesIn(strangers()), [](const auto &row) { return row.param.name; });
