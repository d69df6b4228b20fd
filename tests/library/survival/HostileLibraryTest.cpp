#include "library/survival/Isolated.h"
#include "library/survival/Visit.h"
#include "library/survival/Workplace.h"
#include "records/AppDatabase.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Something that no Vorn has written, done to a library with the documents First (18 units) and Second, and the codes
/// Alpha (a passage in First), below it Beta (one in First, one in Second) and Gamma (none).
struct TamperCase {
    const char *name;
    QByteArrayList statements;
    QString seen; ///< see `visit`
};

const QString documents = u"Second 29340, First 18 | "_s;
const QString codes = u"Alpha 1, .Beta 2, Gamma 0 | "_s;
const QString withoutAlpha = documents + u"Alpha 0, .Beta 2, Gamma 0 | "_s;

QString unreadable(const QString &column, const QString &expected)
{
    return u"The value of column “%1” can't be read: it isn't %2."_s.arg(column, expected);
}

/// Changes the one passage of Alpha.
QByteArrayList passage(const QByteArray &change)
{
    return {"UPDATE coding SET " + change + " WHERE length = 4"};
}

/// Declares one column otherwise, whatever SQLite thinks of that and of the rows there are.
QByteArrayList redeclared(const QByteArray &table, const QByteArray &column, const QByteArray &otherwise)
{
    return {"PRAGMA writable_schema = ON",
        "UPDATE sqlite_master SET sql = replace(sql, '\"" + column + "', '\"" + otherwise + "') WHERE name = '" + table
            + '\''};
}

QByteArrayList manyIndexes(int count)
{
    QByteArrayList statements{"BEGIN"};
    for (int index = 0; index < count; ++index)
        statements.append("CREATE INDEX many" + QByteArray::number(index) + " ON coding(start)");
    return statements + QByteArrayList{"COMMIT"};
}

/// With views that look at each other in a circle.
QByteArrayList strangeTables(int count)
{
    QByteArrayList statements{"CREATE VIRTUAL TABLE found USING fts5(x)", "BEGIN"};
    for (int index = 0; index < count; ++index) {
        const QByteArray number = QByteArray::number(index);
        statements.append("CREATE TABLE strange" + number + " (x REFERENCES strange0)");
        statements.append(
            "CREATE VIEW loop" + number + " AS SELECT * FROM loop" + QByteArray::number((index + 1) % count));
    }
    return statements + QByteArrayList{"COMMIT"};
}

QByteArray manyCodes(const QByteArray &count, const QByteArray &parent)
{
    return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + count
        + ") INSERT INTO code (id, projectID, name, colorHex, parentID, createdAt) SELECT CAST(printf('%016d', i) AS "
          "BLOB), (SELECT id FROM project), 'code ' || i, '#112233', "
        + parent + ", '2026-03-01 09:00:00.000' FROM n";
}

std::vector<TamperCase> hostileRows()
{
    return {
        {"negative_start", passage("start = -5"), withoutAlpha},
        {"negative_length", passage("length = -3"), withoutAlpha},
        {"no_length", passage("length = 0"), withoutAlpha},
        {"start_past_the_text", passage("start = 19"), withoutAlpha},
        {"end_past_the_text", passage("start = 15"), withoutAlpha},
        {"end_that_no_number_holds", passage("start = 9223372036854775807, length = 9223372036854775807"),
            withoutAlpha},
        {"length_that_wraps_around", passage("start = 5, length = 9223372036854775807"), withoutAlpha},
        {"lowest_numbers", passage("start = -9223372036854775807 - 1, length = -9223372036854775807 - 1"),
            withoutAlpha},
        {"start_is_a_word", passage("start = 'five'"), withoutAlpha},
        {"start_is_no_whole_number", passage("start = 0.5"), withoutAlpha},
        {"passage_of_an_unknown_document", passage("documentID = randomblob(16)"), withoutAlpha},
        {"passage_of_an_unknown_code", passage("codeID = randomblob(16)"), withoutAlpha},
        {"identifier_too_short", passage("documentID = x'00'"), withoutAlpha},
        {"passage_coded_never", passage("createdAt = 'never'"), withoutAlpha},
        {"passage_coded_beyond_all_time", passage("createdAt = 9e99"), withoutAlpha},
        {"thousands_of_passages_on_one_word",
            {"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) INSERT INTO coding SELECT "
             "randomblob(16), documentID, codeID, start, length, createdAt FROM coding, n WHERE length = 4"},
            documents + u"Alpha 5001, .Beta 2, Gamma 0 | "_s},

        {"code_below_nothing", {"UPDATE code SET parentID = randomblob(16) WHERE name = 'Beta'"},
            documents + u"Alpha 1, Gamma 0, Beta 2 | "_s},
        {"code_below_itself", {"UPDATE code SET parentID = id WHERE name = 'Alpha'"},
            documents + u"Gamma 0, Alpha 1, Beta 2 | "_s},
        {"codes_below_each_other",
            {"UPDATE code SET parentID = (SELECT id FROM code WHERE name = 'Beta') WHERE name = 'Alpha'"},
            documents + u"Gamma 0, Alpha 1, Beta 2 | "_s},
        {"ten_thousand_levels", {manyCodes("10000", "CASE WHEN i > 1 THEN CAST(printf('%016d', i - 1) AS BLOB) END")},
            documents + u"10003 codes | "_s},
        {"ten_thousand_codes_on_a_cycle", {manyCodes("10000", "CAST(printf('%016d', i % 10000 + 1) AS BLOB)")},
            documents + u"10003 codes | "_s},
        {"ten_thousand_below_one", {manyCodes("10000", "(SELECT id FROM code WHERE name = 'Alpha')")},
            documents + u"10003 codes | "_s},
        {"name_with_a_nul", {"UPDATE code SET name = 'Al' || char(0) || 'pha' WHERE name = 'Alpha'"},
            documents + u"Al\0pha 1, .Beta 2, Gamma 0 | "_s},
        {"no_colour", {"UPDATE code SET colorHex = '\"><script>' || char(0)"}, documents + codes},
        // One code that can't be read leaves the codebook empty: it is read as a whole or not at all.
        {"name_is_a_blob", {"UPDATE code SET name = x'416C706861' WHERE name = 'Alpha'"}, documents + u" | "_s},
        {"parent_is_a_number", {"UPDATE code SET parentID = 7 WHERE name = 'Beta'"}, documents + u" | "_s},

        {"document_added_never", {"UPDATE document SET addedAt = 'never' WHERE title = 'First'"},
            u" | Alpha 0, .Beta 0, Gamma 0 | "_s + unreadable(u"addedAt"_s, u"a date"_s)},
        {"document_added_before_all_time", {"UPDATE document SET addedAt = -62167219200 WHERE title = 'First'"},
            u" | Alpha 0, .Beta 0, Gamma 0 | "_s + unreadable(u"addedAt"_s, u"a date"_s)},
        {"text_is_a_blob", {"UPDATE document SET text = zeroblob(3000000) WHERE title = 'First'"},
            u" | Alpha 0, .Beta 0, Gamma 0 | "_s + unreadable(u"text"_s, u"a text"_s)},
        {"text_is_shorter_than_its_passages", {"UPDATE document SET text = '' WHERE title = 'First'"},
            u"Second 29340, First 0 | Alpha 0, .Beta 1, Gamma 0 | "_s},
        {"text_is_no_utf8", {"UPDATE document SET text = CAST(x'FFC0AFEDA0BDF8' AS TEXT) WHERE title = 'First'"},
            u"Second 29340, First 7 | Alpha 1, .Beta 1, Gamma 0 | "_s},
        {"counts_are_absurd",
            {"UPDATE document SET wordCount = -9223372036854775807 - 1, charCount = 9223372036854775807"},
            documents + codes},
        {"count_is_no_whole_number", {"UPDATE document SET wordCount = 1e300 WHERE title = 'First'"},
            u" | Alpha 0, .Beta 0, Gamma 0 | "_s + unreadable(u"wordCount"_s, u"a whole number"_s)},
        {"title_is_empty", {"UPDATE document SET title = '' WHERE title = 'First'"}, u"Second 29340,  18 | "_s + codes},
        {"document_of_no_project", {"UPDATE document SET projectID = randomblob(16) WHERE title = 'First'"},
            u"Second 29340 | Alpha 0, .Beta 1, Gamma 0 | "_s},

        {"project_has_no_name", {"UPDATE project SET name = x''"}, u" |  | "_s + unreadable(u"name"_s, u"a text"_s)},
        {"no_project", {"DELETE FROM project"}, u" |  | "_s},
        {"project_in_another_spelling",
            {"UPDATE project SET id = substr(hex(id), 1, 8) || '-' || substr(hex(id), 9, 4) || '-' || "
             "substr(hex(id), 13, 4) || '-' || substr(hex(id), 17, 4) || '-' || substr(hex(id), 21)"},
            documents + codes},
    };
}

std::vector<TamperCase> hostileSchemas()
{
    const auto notOurs = [](const QString &why) { return u"refused: The file isn't a library of Vorn: "_s + why; };
    const auto rebuilt = [](const QByteArray &coding) {
        return QByteArrayList{"ALTER TABLE coding RENAME TO old", "CREATE TABLE coding (" + coding,
            "INSERT INTO coding SELECT id, documentID, codeID, start, length, createdAt FROM old"};
    };
    const auto unusable = [&](const QString &table, const QString &why) {
        return notOurs(u"its table “%1” can't be used: %2."_s.arg(table, why));
    };
    const auto changed = u"what is written into it doesn't come back as it was"_s;
    const auto document = QByteArrayList{"id", "projectID", "title", "text", "addedAt", "sourceKind",
        "wordCount INTEGER", "charCount INTEGER", "memo"}
                              .join(", ");
    return {
        {"table_missing", {"DROP TABLE coding"}, notOurs(u"its table “coding” is missing or no plain table."_s)},
        {"column_missing", {"ALTER TABLE document DROP COLUMN memo"},
            notOurs(u"its table “document” has no column “memo” to write into."_s)},
        {"column_in_other_letters", {"ALTER TABLE coding RENAME COLUMN start TO START"},
            notOurs(u"its table “coding” has no column “start” to write into."_s)},
        {"column_is_computed",
            {"ALTER TABLE coding DROP COLUMN start", "ALTER TABLE coding ADD COLUMN start INTEGER AS (0)"},
            notOurs(u"its table “coding” has no column “start” to write into."_s)},
        {"view_for_a_table", {"ALTER TABLE coding RENAME TO old", "CREATE VIEW coding AS SELECT * FROM old"},
            notOurs(u"its table “coding” is missing or no plain table."_s)},
        {"rows_without_numbers",
            rebuilt("id TEXT PRIMARY KEY, documentID, codeID, start, length, createdAt) WITHOUT ROWID"),
            notOurs(u"its table “coding” is missing or no plain table."_s)},
        {"column_for_the_number", {"ALTER TABLE document ADD COLUMN RowID TEXT"},
            notOurs(u"its table “document” hides the numbers of its rows."_s)},
        {"deletes_with_another", {"ALTER TABLE coding ADD COLUMN tie TEXT REFERENCES project ON DELETE CASCADE"},
            notOurs(u"its table “coding” is tied to other tables."_s)},
        {"one_passage_replaces_another",
            rebuilt("id TEXT PRIMARY KEY, documentID, codeID UNIQUE ON CONFLICT REPLACE, start, length, createdAt)"),
            notOurs(u"its table “coding” takes each value of “codeID” only once."_s)},
        {"passages_of_one_start_replace_each_other",
            rebuilt("id, documentID, codeID, start INTEGER PRIMARY KEY ON CONFLICT REPLACE, length, createdAt)"),
            notOurs(u"its table “coding” has a number for its key."_s)},
        {"takes_no_identifiers",
            {"DROP TABLE coding",
                "CREATE TABLE coding (id TEXT PRIMARY KEY, documentID TEXT, codeID TEXT, start INT, length INT, "
                "createdAt TEXT) STRICT"},
            notOurs(u"its table “coding” is missing or no plain table."_s)},
        {"column_that_nobody_fills",
            {"CREATE TABLE copy AS SELECT * FROM coding", "DROP TABLE coding",
                "CREATE TABLE coding (id TEXT PRIMARY KEY, documentID, codeID, start, length, createdAt, author TEXT "
                "NOT NULL)",
                "INSERT INTO coding SELECT *, 'me' FROM copy"},
            notOurs(u"its table “coding” wants “author” in each row."_s)},
        {"numbers_become_texts", redeclared("coding", "start\" INTEGER", "start\" TEXT"),
            unusable(u"coding"_s, unreadable(u"start"_s, u"a whole number"_s).chopped(1))},
        {"numbers_become_fractions", redeclared("coding", "length\" INTEGER", "length\" REAL"),
            unusable(u"coding"_s, unreadable(u"length"_s, u"a whole number"_s).chopped(1))},
        {"names_become_numbers", redeclared("code", "name\" TEXT", "name\" NUMERIC"),
            unusable(u"code"_s, unreadable(u"name"_s, u"a text"_s).chopped(1))},
        {"memo_must_not_be_absent", redeclared("code", "memo\" TEXT", "memo\" TEXT NOT NULL DEFAULT 0"),
            unusable(u"code"_s, u"NOT NULL constraint failed: code.memo"_s)},
        {"absent_memo_is_filled",
            redeclared("document", "memo\" TEXT", "memo\" TEXT NOT NULL ON CONFLICT REPLACE DEFAULT 0"),
            unusable(u"document"_s, changed)},
        {"codes_without_parent_are_swallowed",
            redeclared("code", "parentID\" TEXT", "parentID\" TEXT NOT NULL ON CONFLICT IGNORE"),
            unusable(u"code"_s, changed)},
        {"same_identifier_replaces",
            redeclared("document", "id\" TEXT PRIMARY KEY", "id\" TEXT PRIMARY KEY ON CONFLICT REPLACE"),
            unusable(u"document"_s, u"it takes an identifier twice"_s)},
        {"identifiers_without_a_key",
            {"ALTER TABLE document RENAME TO old", "CREATE TABLE document (" + document + ')',
                "INSERT INTO document SELECT * FROM old", "DROP TABLE old"},
            unusable(u"document"_s, u"it takes an identifier twice"_s)},
        {"computed_column_that_stays_empty",
            {"ALTER TABLE coding RENAME TO old",
                "CREATE TABLE coding (id PRIMARY KEY, documentID, codeID, start INT, length INT, createdAt, empty NOT "
                "NULL AS (CASE WHEN length > 0 THEN NULL ELSE 1 END))",
                "DROP TABLE old"},
            unusable(u"coding"_s, u"NOT NULL constraint failed: coding.empty"_s)},
        {"order_that_is_unknown", redeclared("project", "createdAt\" DATETIME", "createdAt\" DATETIME COLLATE MINE"),
            unusable(u"project"_s, u"no such collation sequence: MINE"_s)},
        {"index_in_an_unknown_order", redeclared("code_on_parentID", "parentID\"", "parentID\" COLLATE MINE"),
            unusable(u"code"_s, u"no such collation sequence: MINE"_s)},
        {"index_of_an_unknown_function",
            {"CREATE INDEX starts ON coding(abs(start))", "PRAGMA writable_schema = ON",
                "UPDATE sqlite_master SET sql = replace(sql, 'abs(', 'mine(') WHERE name = 'starts'"},
            unusable(u"coding"_s, u"no such function: mine"_s)},
        {"table_in_other_letters", {"ALTER TABLE document RENAME TO old", "ALTER TABLE old RENAME TO DOCUMENT"},
            unusable(u"document"_s, u"it doesn't tell of its changes"_s)},
        {"another_table_refers_to_titles", {"CREATE TABLE notes (about REFERENCES document(title))"},
            unusable(u"document"_s, u"foreign key mismatch - \"notes\" referencing \"document\""_s)},
        {"definition_without_end", {"CREATE INDEX starts ON coding(start /*" + QByteArray(60'000, 'x') + "*/)"},
            unusable(u"coding"_s, u"statement too long"_s)},
        {"indexes_without_end", manyIndexes(600),
            notOurs(u"its table “coding” is one of too many tables and indexes."_s)},
        {"migrations_forgotten", {"DELETE FROM grdb_migrations"}, notOurs(u"another program made it."_s)},
        {"one_migration_forgotten", {"DELETE FROM grdb_migrations WHERE identifier = 'memos'"},
            u"refused: duplicate column name: memo - while executing `ALTER TABLE \"code\" ADD COLUMN \"memo\" TEXT`"_s},
        {"additions_of_another_tool",
            {"CREATE TABLE notes (x)", "CREATE VIEW everything AS SELECT * FROM coding",
                "CREATE INDEX dates ON coding(createdAt)", "CREATE UNIQUE INDEX titles ON document(title, id)",
                "ALTER TABLE code ADD COLUMN rank INTEGER"},
            u"open\n"_s + documents + codes},
        {"notes_of_another_tool",
            {"CREATE TABLE notes (about REFERENCES document ON DELETE CASCADE, text CHECK (length(text) > 0))"},
            u"open\n"_s + documents + codes},
        {"quotes_of_another_age",
            {"CREATE INDEX red ON code(name) WHERE colorHex = 'red'", "PRAGMA writable_schema = ON",
                "UPDATE sqlite_master SET sql = replace(sql, char(39), char(34)) WHERE name = 'red'"},
            u"open\n"_s + documents + codes},
        {"strange_tables_and_views_without_end", strangeTables(1'000), u"open\n"_s + documents + codes},
        {"no_index", {"DROP INDEX coding_on_codeID", "DROP INDEX document_on_projectID"},
            u"open\n"_s + documents + codes},
    };
}

/// A library of ours, left by a program that was killed.
std::vector<TamperCase> unfinishedLibraries()
{
    const auto cutOff = [](const QByteArray &change) {
        return QByteArrayList{"PRAGMA cache_size = 1", "BEGIN", change, "UPDATE document SET text = title || text"};
    };
    return {
        {"log_that_isnt_in_the_file",
            {"PRAGMA journal_mode = WAL", "UPDATE code SET name = 'Omega' WHERE name = 'Gamma'"},
            documents + u"Alpha 1, .Beta 2, Omega 0 | "_s},
        {"change_without_an_end", cutOff("DELETE FROM coding"), documents + codes},
        {"tables_without_an_end", cutOff("DROP TABLE coding"), documents + codes},
    };
}

/// The library as another hand has left it.
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
        Workplace place;
        restoreTampered(place, GetParam().statements);
        const Ending ending = inProcessOfItsOwn([&] { return visit(place.libraryFile(), place.exports()); });
        EXPECT_EQ(ending.fault, "");
        return ending.result;
    }
};
class HostileRow : public HostileLibrary { };
class HostileSchema : public HostileLibrary { };
class UnfinishedLibrary : public HostileLibrary { };

} // namespace

TEST_P(HostileRow, IsLeftOutOrToldAndHarmsNothingElse)
{
    EXPECT_EQ(visited(), u"open\n"_s + GetParam().seen);
}

TEST_P(HostileSchema, IsRefusedUnlessItIsHarmless)
{
    EXPECT_EQ(visited(), GetParam().seen);
}

TEST_P(UnfinishedLibrary, IsFinishedAndOpened)
{
    Workplace place;
    place.restoreLibrary();
    runAndBeKilled(place.libraryFile(), GetParam().statements);
    const QStringList companions = QDir(place.library()).entryList({u"vorn.sqlite-*"_s});
    EXPECT_FALSE(companions.isEmpty());
    const Ending ending = inProcessOfItsOwn([&] { return visit(place.libraryFile(), place.exports(), false); });
    EXPECT_EQ(ending.fault, "");
    EXPECT_EQ(ending.result, u"open\n"_s + GetParam().seen);
    EXPECT_EQ(place.leftovers(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(
    , UnfinishedLibrary, testing::ValuesIn(unfinishedLibraries()), [](const auto &row) { return row.param.name; });
INSTANTIATE_TEST_SUITE_P(
    , HostileRow, testing::ValuesIn(hostileRows()), [](const auto &row) { return row.param.name; });
INSTANTIATE_TEST_SUITE_P(
    , HostileSchema, testing::ValuesIn(hostileSchemas()), [](const auto &row) { return row.param.name; });

TEST(Trigger, OfAnotherHandNeverRuns)
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
