#include "library/survival/Isolated.h"
#include "library/survival/Visit.h"
#include "library/survival/Workplace.h"
#include "records/AppDatabase.h"
#include "support/Cases.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Changes that another program made to a library with the documents First (18 units) and Second, and the codes Alpha
/// (a passage in First), below it Beta (one in First, one in Second) and Gamma (none).
struct TamperCase {
    const char *name;
    QByteArrayList statements;
    QString seen; ///< see `visit`
};

const QString documents = u"Second 29340, First 18 | "_s;
const QString everything = documents + u"Alpha 1, .Beta 2, Gamma 0 | "_s;
const QString withoutAlpha = documents + u"Alpha 0, .Beta 2, Gamma 0 | "_s;

QString noDocuments(const QString &column, const QString &expected)
{
    return u" | Alpha 0, .Beta 0, Gamma 0 | The value of column “%1” can't be read: it isn't %2."_s.arg(
        column, expected);
}

/// Changes the one passage of Alpha.
QByteArrayList passage(const QByteArray &change)
{
    return {"UPDATE coding SET " + change + " WHERE length = 4"};
}

/// Changes the definition of a table, whatever SQLite and the rows say.
QByteArrayList redefined(const QByteArray &table, const QByteArray &part, const QByteArray &other)
{
    return {"PRAGMA writable_schema = ON",
        "UPDATE sqlite_master SET sql = replace(sql, '" + part + "', '" + other + "') WHERE name = '" + table + '\''};
}

QByteArrayList inPlaceOf(const QByteArray &table, const QByteArray &definition)
{
    return {"ALTER TABLE " + table + " RENAME TO old", definition};
}

/// Views that refer to each other in a circle: asking one for its columns costs more than anybody can wait for.
QByteArrayList circularViews(int count)
{
    QByteArrayList statements{"CREATE VIRTUAL TABLE found USING fts5(x)", "BEGIN"};
    for (int index = 0; index < count; ++index)
        statements.append("CREATE VIEW loop" + QByteArray::number(index) + " AS SELECT * FROM loop"
            + QByteArray::number((index + 1) % count));
    return statements + QByteArrayList{"COMMIT"};
}

QByteArrayList tenThousandCodes(const QByteArray &parent)
{
    return {"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10000) INSERT INTO code (id, "
            "projectID, name, colorHex, parentID, createdAt) SELECT CAST(printf('%016d', i) AS BLOB), (SELECT id FROM "
            "project), 'code ' || i, '#112233', "
        + parent + ", '2026-03-01 09:00:00.000' FROM n"};
}

std::vector<TamperCase> strangeRows()
{
    return {
        {"negative_start", passage("start = -5"), withoutAlpha},
        {"no_length", passage("length = 0"), withoutAlpha},
        {"end_past_the_text", passage("start = 15"), withoutAlpha},
        {"length_that_wraps_around", passage("start = 5, length = 9223372036854775807"), withoutAlpha},
        {"start_is_a_word", passage("start = 'five'"), withoutAlpha},
        {"passage_of_an_unknown_document", passage("documentID = randomblob(16)"), withoutAlpha},
        {"passage_coded_never", passage("createdAt = 'never'"), withoutAlpha},
        {"codes_below_each_other",
            {"UPDATE code SET parentID = (SELECT id FROM code WHERE name = 'Beta') WHERE name = 'Alpha'"},
            documents + u"Gamma 0, Alpha 1, Beta 2 | "_s},
        {"ten_thousand_levels", tenThousandCodes("CASE WHEN i > 1 THEN CAST(printf('%016d', i - 1) AS BLOB) END"),
            documents + u"10003 codes | "_s},
        // The codebook is read as a whole or not at all.
        {"parent_is_a_number", {"UPDATE code SET parentID = 7 WHERE name = 'Beta'"}, documents + u" | "_s},
        {"name_with_a_nul", {"UPDATE code SET name = 'Al' || char(0) || 'pha' WHERE name = 'Alpha'"},
            documents + u"Al\0pha 1, .Beta 2, Gamma 0 | "_s},
        {"document_added_before_the_first_year", {"UPDATE document SET addedAt = -62167219200 WHERE title = 'First'"},
            noDocuments(u"addedAt"_s, u"a date"_s)},
        {"text_is_a_blob", {"UPDATE document SET text = zeroblob(3000000) WHERE title = 'First'"},
            noDocuments(u"text"_s, u"a text"_s)},
        {"text_is_shorter_than_its_passages", {"UPDATE document SET text = '' WHERE title = 'First'"},
            u"Second 29340, First 0 | Alpha 0, .Beta 1, Gamma 0 | "_s},
        {"text_isnt_utf8", {"UPDATE document SET text = CAST(x'FFC0AFEDA0BDF8' AS TEXT) WHERE title = 'First'"},
            u"Second 29340, First 7 | Alpha 1, .Beta 1, Gamma 0 | "_s},
        {"project_id_as_text",
            {"UPDATE project SET id = substr(hex(id), 1, 8) || '-' || substr(hex(id), 9, 4) || '-' || "
             "substr(hex(id), 13, 4) || '-' || substr(hex(id), 17, 4) || '-' || substr(hex(id), 21)"},
            everything},
        {"no_project", {"DELETE FROM project"}, u" |  | "_s},
    };
}

std::vector<TamperCase> strangeSchemas()
{
    const auto notOurs = [](const QString &why) { return u"refused: The file isn't a library of Vorn: "_s + why; };
    const auto opened = u"open\n"_s + everything;
    const QByteArray columns = "(id TEXT PRIMARY KEY NOT NULL, documentID TEXT NOT NULL, codeID TEXT NOT NULL, start "
                               "INTEGER NOT NULL, length INTEGER NOT NULL, createdAt DATETIME NOT NULL)";
    return {
        {"table_missing", {"DROP TABLE coding"}, notOurs(u"its table “coding” is missing or no plain table."_s)},
        {"view", inPlaceOf("coding", "CREATE VIEW coding AS SELECT * FROM old"),
            notOurs(u"its table “coding” is missing or no plain table."_s)},
        {"rows_without_numbers", inPlaceOf("coding", "CREATE TABLE coding " + columns + " WITHOUT ROWID"),
            notOurs(u"its table “coding” can't be written: no such column: rowid - while executing `DELETE FROM coding "
                    "WHERE rowid = 0`."_s)},
        {"column_that_hides_the_numbers_of_rows", {"ALTER TABLE document ADD COLUMN RowID TEXT"},
            notOurs(u"its table “document” has the column “RowID” TEXT."_s)},
        {"column_missing", {"ALTER TABLE document DROP COLUMN memo"},
            notOurs(u"its table “document” lacks the column “memo” TEXT."_s)},
        {"column_of_another_type", redefined("coding", "\"start\" INTEGER", "\"start\" TEXT"),
            notOurs(u"its table “coding” lacks the column “start” INTEGER NOT NULL."_s)},
        {"generated_column", redefined("coding", "INTEGER NOT NULL, \"length", "INTEGER NOT NULL AS (0), \"length"),
            notOurs(u"its table “coding” lacks the column “start” INTEGER NOT NULL."_s)},
        {"memo_that_must_not_be_absent", redefined("code", "\"memo\" TEXT", "\"memo\" TEXT NOT NULL DEFAULT 0"),
            notOurs(u"its table “code” lacks the column “memo” TEXT."_s)},
        {"column_that_nobody_fills", redefined("coding", "NOT NULL)", "NOT NULL, author TEXT NOT NULL)"),
            notOurs(u"its table “coding” has the column “author” TEXT NOT NULL."_s)},
        {"identifiers_without_a_key",
            inPlaceOf("coding", QByteArray("CREATE TABLE coding " + columns).replace(" PRIMARY KEY", "")),
            notOurs(u"its table “coding” lacks the column “id” TEXT NOT NULL PRIMARY KEY."_s)},
        {"equal_identifier_replaces", redefined("document", "PRIMARY KEY", "PRIMARY KEY ON CONFLICT REPLACE"),
            notOurs(u"its table “document” has a CONFLICT clause."_s)},
        {"one_passage_for_each_start", {"DELETE FROM coding", "CREATE UNIQUE INDEX starts ON coding(start)"},
            notOurs(u"its table “coding” has the unique key “start”."_s)},
        {"is_deleted_with_another", {"ALTER TABLE coding ADD COLUMN tie TEXT REFERENCES project ON DELETE CASCADE"},
            notOurs(u"its table “coding” has a reference to “project”."_s)},
        {"memos_of_few_letters", redefined("code", "\"memo\" TEXT", "\"memo\" TEXT CHECK (length(memo) < 9)"),
            notOurs(u"its table “code” has a CHECK clause."_s)},
        {"index_in_an_unknown_order", redefined("code_on_parentID", "\"parentID\")", "\"parentID\" COLLATE MINE)"),
            notOurs(u"its table “code” can't be written: no such collation sequence: MINE - while executing `DELETE "
                    "FROM code WHERE rowid = 0`."_s)},
        {"migrations_forgotten", {"DELETE FROM grdb_migrations"}, notOurs(u"another program made it."_s)},
        {"one_migration_forgotten", {"DELETE FROM grdb_migrations WHERE identifier = 'memos'"},
            u"refused: duplicate column name: memo - while executing `ALTER TABLE \"code\" ADD COLUMN \"memo\" TEXT`"_s},
        {"migration_in_between_forgotten", {"DELETE FROM grdb_migrations WHERE identifier = 'codes'"},
            u"refused: no such table: code - while executing `ALTER TABLE \"code\" ADD COLUMN \"memo\" TEXT`"_s},
        {"additions",
            {"CREATE TABLE notes (about REFERENCES document ON DELETE CASCADE, text CHECK (length(text) > 0))",
                "CREATE VIEW all_codings AS SELECT * FROM coding", "CREATE INDEX dates ON coding(createdAt)",
                "CREATE UNIQUE INDEX titles ON document(title, id)", "ALTER TABLE code ADD COLUMN checked INTEGER",
                "ALTER TABLE code ADD COLUMN rank INTEGER NOT NULL DEFAULT 0", "DROP INDEX coding_on_codeID"},
            opened},
        {"circular_views", circularViews(1'000), opened},
    };
}

/// A library of ours, left by a program that was killed.
std::vector<TamperCase> unfinishedLibraries()
{
    const auto cutOff = [](const QByteArray &change) {
        return QByteArrayList{"PRAGMA cache_size = 1", "BEGIN", change, "UPDATE document SET text = title || text"};
    };
    return {
        {"log", {"PRAGMA journal_mode = WAL", "UPDATE code SET name = 'Omega' WHERE name = 'Gamma'"},
            documents + u"Alpha 1, .Beta 2, Omega 0 | "_s},
        {"half_a_change", cutOff("DELETE FROM coding"), everything},
        {"half_a_change_of_the_schema", cutOff("DROP TABLE coding"), everything},
    };
}

/// Makes the library anew, as another program has left it.
void restoreTampered(Workplace &place, const QByteArrayList &statements)
{
    place.restoreLibrary();
    DatabaseQueue queue(place.libraryFile());
    queue.writeWithoutTransaction([&](Database &database) {
        database.execute("PRAGMA foreign_keys = OFF");
        for (const QByteArray &statement : statements)
            database.execute(statement);
    });
}

class HostileLibrary : public testing::TestWithParam<TamperCase> {
protected:
    QString visited()
    {
        restoreTampered(place, GetParam().statements);
        const Ending ending = inProcessOfItsOwn([&] { return visit(place.libraryFile(), place.exports()); });
        EXPECT_EQ(ending.fault, "");
        return ending.result;
    }

    Workplace place;
};
class StrangeRow : public HostileLibrary { };
class StrangeSchema : public HostileLibrary { };
class UnfinishedLibrary : public HostileLibrary { };

} // namespace

TEST_P(StrangeRow, IsLeftOutOrToldAndHarmsNothingElse)
{
    EXPECT_EQ(visited(), u"open\n"_s + GetParam().seen);
}

TEST_P(StrangeSchema, IsRefusedUnlessItIsHarmless)
{
    EXPECT_EQ(visited(), GetParam().seen);
}

TEST_P(UnfinishedLibrary, IsFinishedAndOpened)
{
    place.restoreLibrary();
    runAndBeKilled(place.libraryFile(), GetParam().statements);
    EXPECT_FALSE(QDir(place.library()).entryList({u"vorn.sqlite-*"_s}).isEmpty());
    const Ending ending = inProcessOfItsOwn([&] { return visit(place.libraryFile(), place.exports(), false); });
    EXPECT_EQ(ending.fault, "");
    EXPECT_EQ(ending.result, u"open\n"_s + GetParam().seen);
    EXPECT_EQ(place.leftovers(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(, StrangeRow, testing::ValuesIn(strangeRows()), rowName);
INSTANTIATE_TEST_SUITE_P(, StrangeSchema, testing::ValuesIn(strangeSchemas()), rowName);
INSTANTIATE_TEST_SUITE_P(, UnfinishedLibrary, testing::ValuesIn(unfinishedLibraries()), rowName);

TEST(Trigger, OfAnotherProgramNeverRuns)
{
    Workplace place;
    restoreTampered(place,
        {"CREATE TRIGGER thief AFTER INSERT ON coding BEGIN DELETE FROM document; DELETE FROM code; END",
            "CREATE TRIGGER guard BEFORE UPDATE ON code BEGIN SELECT RAISE(ABORT, 'no'); END"});
    TestLibrary library({}, AppDatabase::openQueue(place.libraryFile()));
    library.store.assignCode(library.code(u"Gamma"_s), library.document(u"First"_s), {5, 5});
    library.store.renameCode(library.code(u"Gamma"_s), u"Delta"_s);
    EXPECT_EQ(library.store.documents()->size(), 2);
    EXPECT_EQ(library.store.excerpts(library.code(u"Delta"_s).id).size(), 1);
}
