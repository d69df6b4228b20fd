#include "library/survival/Visit.h"
#include "library/survival/Workplace.h"
#include "platform/AtomicFile.h"
#include "records/AppDatabase.h"
#include "support/Cases.h"
#include "support/NastyText.h"

#include <QDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

/// What another program made of a library with the documents First (18 units) and Second, and the codes Alpha (a
/// passage in First), below it Beta (one in First, one in Second) and Gamma (none), or put in its place.
struct TamperCase {
    const char *name;
    std::function<void(const QString &path)> tamper;
    QString seen; ///< see `visit`
};

const QString documents = u"open\nSecond 29340, First 18 | "_s;
const QString everything = documents + u"Alpha 1, .Beta 2, Gamma 0 | "_s;
const QString withoutAlpha = documents + u"Alpha 0, .Beta 2, Gamma 0 | "_s;

QString unread(const QString &column, const QString &expected)
{
    return u"open\n | Alpha 0, .Beta 0, Gamma 0 | The value of column “%1” can't be read: it isn't %2."_s.arg(
        column, expected);
}

QString refused(const QString &why)
{
    return u"refused: The file isn't a library of Vorn: "_s + why;
}

/// Runs the statements on our library.
TamperCase library(const char *name, const QByteArrayList &statements, const QString &seen)
{
    return {name,
        [=](const QString &path) {
            DatabaseQueue(path).writeWithoutTransaction([&](Database &database) {
                database.execute("PRAGMA foreign_keys = OFF");
                for (const QByteArray &statement : statements)
                    database.execute(statement);
            });
        },
        seen};
}

/// Changes the one passage of Alpha.
TamperCase passage(const char *name, const QByteArray &change)
{
    return library(name, {"UPDATE coding SET " + change + " WHERE length = 4"}, withoutAlpha);
}

/// Our library, left by a program that was killed. What it has left beside the file isn't in the file yet, or must
/// come out of it again.
TamperCase unfinished(const char *name, const QByteArrayList &statements, const QString &seen)
{
    return {name,
        [=](const QString &path) {
            runAndBeKilled(path, statements);
            EXPECT_FALSE(QFileInfo(path).dir().entryList({u"vorn.sqlite-*"_s}).isEmpty());
        },
        seen};
}

/// Another program's database in the place of ours.
TamperCase foreign(const char *name, const QByteArrayList &statements)
{
    return {name,
        [=](const QString &path) {
            QFile::remove(path);
            runAndBeKilled(path, statements);
        },
        refused(u"another program made it."_s)};
}

/// Changes the definition of a table, whatever SQLite and the rows say.
QByteArrayList redefined(const QByteArray &table, const QByteArray &part, const QByteArray &other)
{
    return {"PRAGMA writable_schema = ON",
        "UPDATE sqlite_master SET sql = replace(sql, '" + part + "', '" + other + "') WHERE name = '" + table + '\''};
}

std::vector<TamperCase> strangeRows()
{
    return {
        passage("negative_start", "start = -5"),
        passage("end_past_the_text", "start = 15"),
        passage("length_that_wraps_around", "start = 5, length = 9223372036854775807"),
        passage("start_is_a_word", "start = 'five'"),
        passage("passage_of_an_unknown_document", "documentID = randomblob(16)"),
        library("codes_below_each_other",
            {"UPDATE code SET parentID = (SELECT id FROM code WHERE name = 'Beta') WHERE name = 'Alpha'"},
            documents + u"Gamma 0, Alpha 1, Beta 2 | "_s),
        library("thousands_of_levels",
            {"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 4000) INSERT INTO code (id, "
             "projectID, name, colorHex, parentID, createdAt) SELECT CAST(printf('%016d', i) AS BLOB), (SELECT id "
             "FROM project), 'code ' || i, '#112233', CASE WHEN i > 1 THEN CAST(printf('%016d', i - 1) AS BLOB) END, "
             "'2026-03-01 09:00:00.000' FROM n"},
            documents + u"4003 codes | "_s),
        // The codebook is read as a whole or not at all.
        library("parent_is_a_number", {"UPDATE code SET parentID = 7 WHERE name = 'Beta'"}, documents + u" | "_s),
        library("name_with_a_nul", {"UPDATE code SET name = 'Al' || char(0) || 'pha' WHERE name = 'Alpha'"},
            documents + u"Al\0pha 1, .Beta 2, Gamma 0 | "_s),
        library("document_added_before_the_first_year",
            {"UPDATE document SET addedAt = -62167219200 WHERE title = 'First'"}, unread(u"addedAt"_s, u"a date"_s)),
        library("text_is_a_blob", {"UPDATE document SET text = zeroblob(3000000) WHERE title = 'First'"},
            unread(u"text"_s, u"a text"_s)),
        library("text_isnt_utf8", {"UPDATE document SET text = CAST(x'FFC0AFEDA0BDF8' AS TEXT) WHERE title = 'First'"},
            u"open\nSecond 29340, First 7 | Alpha 1, .Beta 1, Gamma 0 | "_s),
        library("project_id_as_text",
            {"UPDATE project SET id = substr(hex(id), 1, 8) || '-' || substr(hex(id), 9, 4) || '-' || "
             "substr(hex(id), 13, 4) || '-' || substr(hex(id), 17, 4) || '-' || substr(hex(id), 21)"},
            everything),
        library("no_project", {"DELETE FROM project"}, u"open; looking at the library changed it\n |  | "_s),
    };
}

std::vector<TamperCase> strangeSchemas()
{
    return {
        library("table_missing", {"DROP TABLE coding"}, refused(u"its table “coding” is missing or no plain table."_s)),
        library("column_that_hides_the_numbers_of_rows", {"ALTER TABLE document ADD COLUMN RowID TEXT"},
            refused(u"its table “document” has the column “RowID” TEXT."_s)),
        library("column_missing", {"ALTER TABLE document DROP COLUMN memo"},
            refused(u"its table “document” lacks the column “memo” TEXT."_s)),
        library("column_that_nobody_fills", redefined("coding", "NOT NULL)", "NOT NULL, author TEXT NOT NULL)"),
            refused(u"its table “coding” has the column “author” TEXT NOT NULL."_s)),
        library("one_passage_for_each_start", {"DELETE FROM coding", "CREATE UNIQUE INDEX starts ON coding(start)"},
            refused(u"its table “coding” has the unique key “start”."_s)),
        library("is_deleted_with_another",
            {"ALTER TABLE coding ADD COLUMN tie TEXT REFERENCES project ON DELETE CASCADE"},
            refused(u"its table “coding” has a reference to “project”."_s)),
        library("memos_of_few_letters", redefined("code", "\"memo\" TEXT", "\"memo\" TEXT CHECK (length(memo) < 9)"),
            refused(u"its table “code” has a CHECK clause."_s)),
        library("migrations_forgotten", {"DELETE FROM grdb_migrations"}, refused(u"another program made it."_s)),
        library("migration_in_between_forgotten", {"DELETE FROM grdb_migrations WHERE identifier = 'codes'"},
            u"refused: no such table: code - while executing `ALTER TABLE \"code\" ADD COLUMN \"memo\" TEXT`"_s),
        library("additions",
            {"CREATE TABLE notes (about REFERENCES document ON DELETE CASCADE, text CHECK (length(text) > 0))",
                "CREATE VIEW all_codings AS SELECT * FROM coding", "CREATE INDEX dates ON coding(createdAt)",
                "CREATE UNIQUE INDEX titles ON document(title, id)", "ALTER TABLE code ADD COLUMN checked INTEGER",
                "ALTER TABLE code ADD COLUMN rank INTEGER NOT NULL DEFAULT 0", "DROP INDEX coding_on_codeID"},
            everything),
    };
}

std::vector<TamperCase> unfinishedLibraries()
{
    const auto cutOff = [](const QByteArray &change) {
        return QByteArrayList{"PRAGMA cache_size = 1", "BEGIN", change, "UPDATE document SET text = title || text"};
    };
    const QString restored = QString(everything).replace(u"open"_s, u"open; looking at the library changed it"_s);
    return {
        unfinished("log", {"PRAGMA journal_mode = WAL", "UPDATE code SET name = 'Omega' WHERE name = 'Gamma'"},
            documents + u"Alpha 1, .Beta 2, Omega 0 | "_s),
        unfinished("half_a_change", cutOff("DELETE FROM coding"), restored),
        unfinished("half_a_change_of_the_schema", cutOff("DROP TABLE coding"), restored),
    };
}

std::vector<TamperCase> foreignFiles()
{
    return {
        {"letter",
            [](const QString &path) {
                AtomicFile::write(path, "Dear diary, this is no database, however long it may be.");
            },
            u"refused: file is not a database - while executing `SELECT * FROM sqlite_master LIMIT 1`"_s},
        foreign("database", {"CREATE TABLE bookmarks (url TEXT)"}),
        foreign("migrations",
            {"CREATE TABLE grdb_migrations (identifier TEXT NOT NULL PRIMARY KEY)",
                "INSERT INTO grdb_migrations VALUES ('v1')", "CREATE TABLE player (name)"}),
        foreign("migrations_without_end",
            {"CREATE VIEW grdb_migrations AS WITH RECURSIVE n(identifier) AS (SELECT 'v' UNION ALL SELECT identifier "
             "FROM n) SELECT identifier FROM n"}),
        foreign("unfinished_log", {"PRAGMA journal_mode = WAL", "CREATE TABLE bookmarks (url TEXT)"}),
        foreign("unfinished_change",
            {"CREATE TABLE bookmarks (url TEXT)", "INSERT INTO bookmarks VALUES (zeroblob(100000))",
                "PRAGMA cache_size = 1", "BEGIN", "UPDATE bookmarks SET url = randomblob(100000)"}),
        {"pipe",
            [](const QString &path) {
                QFile::remove(path);
                ::mkfifo(QFile::encodeName(path).constData(), 0600);
            },
            u"refused: disk I/O error"_s},
        {"file_of_a_later_format",
            [](const QString &path) {
                QByteArray content = AtomicFile::readFile(path);
                content[18] = 3; // a program that knows less may read and not write
                AtomicFile::write(path, content);
            },
            u"refused: The file may only be read, and Vorn must be able to write it."_s},
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

class HostileLibrary : public testing::TestWithParam<TamperCase> { };

/// Fills a part of the bytes with noise, or cuts them off, as chance has it.
void damage(QByteArray &bytes, NastyText &random)
{
    constexpr int pageSize = 4'096;
    const auto noise = [&](qsizetype start, int length) {
        for (qsizetype index = start; index < std::min(start + length, bytes.size()); ++index)
            bytes[index] = char(random.onceIn(2) ? random.number(0, 1) * 255 : random.number(0, 255));
    };
    const qsizetype page = random.number(0, int(bytes.size()) / pageSize - 1) * pageSize;
    switch (random.number(0, 3)) {
    case 0:
        return bytes.truncate(page + random.number(0, 1) * 100);
    case 1:
        return noise(page, random.number(1, pageSize));
    case 2:
        return noise(random.number(16, 99), random.number(1, 4)); // what the file says of itself
    default:
        return noise(page + random.number(0, 40), 2); // what a page says of its cells
    }
}

} // namespace

TEST_P(HostileLibrary, IsUsedAsFarAsItGoesOrRefusedAndLeftAsItIs)
{
    Workplace place;
    place.restoreLibrary();
    GetParam().tamper(place.libraryFile());
    const auto before = contentsOf(place.library());
    const QString seen = visit(place.libraryFile(), place.exports());
    EXPECT_EQ(seen, GetParam().seen);
    if (seen.startsWith(u"refused"_s)) {
        EXPECT_EQ(contentsOf(place.library()), before);
    }
    EXPECT_EQ(place.leftovers(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(StrangeRows, HostileLibrary, testing::ValuesIn(strangeRows()), rowName);
INSTANTIATE_TEST_SUITE_P(StrangeSchemas, HostileLibrary, testing::ValuesIn(strangeSchemas()), rowName);
INSTANTIATE_TEST_SUITE_P(Unfinished, HostileLibrary, testing::ValuesIn(unfinishedLibraries()), rowName);
INSTANTIATE_TEST_SUITE_P(ForeignFiles, HostileLibrary, testing::ValuesIn(foreignFiles()), rowName);

TEST(DamagedLibrary, IsRefusedOrUsedAsFarAsItGoesAndNeverBringsTheProgramDown)
{
    Workplace place;
    place.restoreLibrary();
    const QByteArray sound = AtomicFile::readFile(place.libraryFile());
    for (unsigned seed = 0; seed < 10; ++seed) {
        NastyText random(seed);
        QByteArray bytes = sound;
        damage(bytes, random);
        AtomicFile::write(place.libraryFile(), bytes);
        const QString seen = visit(place.libraryFile(), place.exports());
        EXPECT_TRUE(seen.startsWith(u"refused: "_s) || seen.startsWith(u"open\n"_s))
            << "seed " << seed << ": " << seen.toStdString();
    }
}

TEST(Trigger, OfAnotherProgramNeverRuns)
{
    Workplace place;
    TestLibrary library({}, place.restored());
    for (const char *trigger :
        {"CREATE TRIGGER thief AFTER INSERT ON coding BEGIN DELETE FROM document; DELETE FROM code; END",
            "CREATE TRIGGER guard BEFORE UPDATE ON code BEGIN SELECT RAISE(ABORT, 'no'); END"})
        DatabaseQueue(place.libraryFile()).write([&](Database &database) { database.execute(trigger); });
    library.store.assignCode(library.code(u"Gamma"_s), library.document(u"First"_s), {5, 5});
    library.store.renameCode(library.code(u"Gamma"_s), u"Delta"_s);
    EXPECT_EQ(library.store.documents()->size(), 2);
    EXPECT_EQ(library.store.excerpts(library.code(u"Delta"_s).id).size(), 1);
}
