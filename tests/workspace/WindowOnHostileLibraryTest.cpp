#include "ShownWindow.h"
#include "records/database/Database.h"
#include "workspace/sidebar/SidebarList.h"

using namespace Qt::StringLiterals;

namespace {

struct TamperCase {
    const char *name;
    QByteArrayList statements;
};

QByteArray manyCodes(const QByteArray &parent)
{
    return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10000) "
           "INSERT INTO code (id, projectID, name, colorHex, parentID, createdAt) "
           "SELECT CAST(printf('%016d', i) AS BLOB), (SELECT id FROM project), 'code ' || i, '#112233', "
        + parent + ", '2026-03-01 09:00:00.000' FROM n";
}

/// Copies each passage.
QByteArray passages(const QByteArray &start, const QByteArray &length)
{
    return "INSERT INTO coding SELECT randomblob(16), documentID, codeID, " + start + ", " + length
        + ", createdAt FROM coding";
}

/// A library that no Vorn has written, shown in the real window.
class WindowOnHostileLibrary : public ShownWindow, public testing::WithParamInterface<TamperCase> {
protected:
    void look()
    {
        QApplication::processEvents();
        EXPECT_FALSE(root().grab().isNull());
    }
    void lookAtEverything()
    {
        LibraryStore &store = library.store;
        for (const Code &code : QList<Code>(store.codes()->first(2))) {
            store.sidebarSelection().set(CodeSelection{code.id});
            look();
            if (const auto excerpts = store.excerpts(code.id); !excerpts.isEmpty())
                store.reveal(ExcerptHit(excerpts.first()));
        }
        const QUuid first = store.codes()->first().id;
        store.runQuery({{first}, QuerySpec::Mode::any, {}});
        look();
        store.runWordFrequency(WordFrequency::InCode{first}, 3, true, 50);
        store.selectWordFreqTerm(u"trust"_s);
        look();
        store.goToDocuments();
        for (const Document &document : QList<Document>(store.documents().get())) {
            store.selectedDocumentID().set(document.id);
            look();
        }
    }
};

} // namespace

TEST_P(WindowOnHostileLibrary, ShowsWhatItCanAndGoesOnWorking)
{
    library.makeCodes({u"Alpha"_s, u"Beta"_s});
    library.paste(u"Second"_s, u"other words"_s);
    library.paste(u"First"_s, u"trust grows slowly, and goes quickly\n"_s.repeated(50));
    library.store.assignCode(library.code(u"Alpha"_s), library.document(u"First"_s), {0, 5});
    library.queue->write([](Database &database) {
        for (const QByteArray &statement : GetParam().statements)
            database.execute(statement);
    });
    library.store.refresh();
    open();
    lookAtEverything();
    const Document document = library.store.documents()->last();
    const Code code = library.store.codes()->last();
    drag(0, 5);
    EXPECT_EQ(text().selection(), (TextRange{0, 5}));
    const qint64 before = library.store.codeCounts()->value(code.id);
    library.store.assignCode(code, document, text().selection());
    look();
    EXPECT_EQ(library.store.codeCounts()->value(code.id), before + 1);
    EXPECT_GE(find<SidebarList>().model()->rowCount(), library.store.codes()->size());
}

INSTANTIATE_TEST_SUITE_P(, WindowOnHostileLibrary,
    testing::Values(
        TamperCase{"TenThousandLevels", {manyCodes("CASE WHEN i > 1 THEN CAST(printf('%016d', i - 1) AS BLOB) END")}},
        TamperCase{"TenThousandCodesOnACycle", {manyCodes("CAST(printf('%016d', i % 10000 + 1) AS BLOB)")}},
        TamperCase{"AbsurdPassages",
            {passages("-5", "9"), passages("9223372036854775807", "9223372036854775807"),
                passages("3", "9223372036854775807"), passages("-9223372036854775807 - 1", "-1"),
                passages("1849", "99"), passages("1850", "1"), passages("4", "0")}},
        TamperCase{"ThousandsOfPassagesOnOneWord",
            {"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) INSERT INTO coding SELECT "
             "randomblob(16), documentID, codeID, start, length, createdAt FROM coding, n"}},
        TamperCase{"EndlessNamesAndMemos",
            {"UPDATE code SET name = replace(hex(zeroblob(3000)), '00', 'x ' || char(0, 10)), colorHex = name",
                "UPDATE document SET title = hex(zeroblob(3000)), memo = hex(zeroblob(100000))",
                "UPDATE project SET name = char(0x202E) || hex(zeroblob(3000))",
                "UPDATE code SET memo = hex(zeroblob(100000))"}},
        TamperCase{"AbsurdCountsAndDates",
            {"UPDATE document SET addedAt = '0001-01-01', wordCount = -9223372036854775807 - 1, charCount = "
             "9223372036854775807",
                "UPDATE code SET createdAt = '9999-12-31 23:59:59.999'",
                "UPDATE coding SET createdAt = -62135596800"}}),
    rowName);
