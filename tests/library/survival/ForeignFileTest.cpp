#include "library/survival/Isolated.h"
#include "library/survival/Workplace.h"
#include "platform/AtomicFile.h"
#include "platform/LocalizedError.h"
#include "records/AppDatabase.h"
#include "support/Cases.h"
#include "support/FailingDisk.h"

#include <QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// What stands where the library should be.
struct ForeignFile {
    const char *name;
    std::function<void(const QString &path)> put; ///< nothing is at `path` but our library
    const char *complaint; ///< its beginning
    bool needsAnotherUser = false; ///< since root may do everything
};

constexpr auto anotherProgram = "The file isn't a library of Vorn: another program made it.";

/// What a killed program has left beside the file isn't in the file yet, or must come out of it again.
ForeignFile database(const char *name, const QByteArrayList &statements, const QString &companion = {})
{
    return {name,
        [=](const QString &path) {
            QFile::remove(path);
            runAndBeKilled(path, statements);
            EXPECT_TRUE(companion.isEmpty() || QFileInfo(path + companion).size() > 0);
        },
        anotherProgram};
}

std::vector<ForeignFile> foreignFiles()
{
    return {
        {"Letter",
            [](const QString &path) {
                AtomicFile::write(path, "Dear diary, this is no database, however long it may be.");
            },
            "file is not a database"},
        database("Database", {"CREATE TABLE bookmarks (url TEXT)"}),
        database("DatabaseWithTablesOfOurNames",
            {"CREATE TABLE project (id)", "CREATE TABLE document (id)", "CREATE TABLE code (id)",
                "CREATE TABLE coding (id)"}),
        database("DatabaseWithMigrations",
            {"CREATE TABLE grdb_migrations (identifier TEXT NOT NULL PRIMARY KEY)",
                "INSERT INTO grdb_migrations VALUES ('v1')", "CREATE TABLE player (name)"}),
        database("MigrationsWithoutEnd",
            {"CREATE VIEW grdb_migrations AS WITH RECURSIVE n(identifier) AS (SELECT 'v' UNION ALL SELECT identifier "
             "FROM n) SELECT identifier FROM n"}),
        database("UnfinishedLog", {"PRAGMA journal_mode = WAL", "CREATE TABLE bookmarks (url TEXT)"}, u"-wal"_s),
        database("UnfinishedChange",
            {"CREATE TABLE bookmarks (url TEXT)", "INSERT INTO bookmarks VALUES (zeroblob(100000))",
                "PRAGMA cache_size = 1", "BEGIN", "UPDATE bookmarks SET url = randomblob(100000)"},
            u"-journal"_s),
        {"Pipe",
            [](const QString &path) {
                QFile::remove(path);
                ::mkfifo(QFile::encodeName(path).constData(), 0600);
            },
            "disk I/O error"},
        {"FileForReadingOnly", [](const QString &path) { QFile::setPermissions(path, QFile::Permissions(0x4444)); },
            "The file may only be read, and Vorn must be able to write it.", true},
        {"FileOfALaterFormat",
            [](const QString &path) {
                QByteArray content = AtomicFile::readFile(path);
                content[18] = 3; // a program that knows less may read and not write
                AtomicFile::write(path, content);
            },
            "The file may only be read, and Vorn must be able to write it."},
    };
}

/// Names, and of files what they hold.
std::vector<std::pair<QString, QByteArray>> contentsOf(const QString &folder)
{
    std::vector<std::pair<QString, QByteArray>> contents;
    for (const QFileInfo &each : QDir(folder).entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot))
        contents.emplace_back(each.fileName(), each.isFile() ? AtomicFile::readFile(each.filePath()) : QByteArray());
    return contents;
}

class Start : public testing::TestWithParam<ForeignFile> { };

} // namespace

TEST_P(Start, SaysWhyItCantUseWhatStandsThereAndLeavesItAsItIs)
{
    const bool isRoot = ::geteuid() == 0;
    Workplace place;
    if (GetParam().needsAnotherUser && isRoot && !isReachableForAll(place.library()))
        GTEST_SKIP() << "another user can't reach the temporary folder, and root may write every file";
    place.restoreLibrary();
    GetParam().put(place.libraryFile());
    const auto before = contentsOf(place.library());
    const Ending ending = inProcessOfItsOwn([&] {
        if (GetParam().needsAnotherUser && isRoot)
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

INSTANTIATE_TEST_SUITE_P(, Start, testing::ValuesIn(foreignFiles()), rowName);
