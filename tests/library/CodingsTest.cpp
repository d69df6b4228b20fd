#include "library/PassageTrimming.h"
#include "records/database/Request.h"
#include "records/database/Row.h"
#include "support/TestLibrary.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 most = std::numeric_limits<qint64>::max();
constexpr qint64 least = std::numeric_limits<qint64>::min();

struct SelectionCase {
    const char *name;
    QString text;
    TextRange selection;
    TextRange passage; ///< length 0: nothing is coded
};
class Selection : public testing::TestWithParam<SelectionCase> { };

} // namespace

TEST_P(Selection, CodesThePassageThatIsMeant)
{
    TestLibrary library;
    const Code code = library.makeCodes({u"One"_s}).first();
    const qint64 revision = library.store.codingRevision().get();
    library.store.assignCode(code, library.paste(u"A"_s, GetParam().text), GetParam().selection);
    const QList<Coding> stored = library.storedCodings();
    ASSERT_EQ(stored.size(), GetParam().passage.length > 0 ? 1 : 0);
    EXPECT_EQ(library.store.codingRevision().get(), revision + stored.size());
    if (!stored.isEmpty()) {
        EXPECT_EQ(stored.first().range(), GetParam().passage);
    }
}

INSTANTIATE_TEST_SUITE_P(Ranges, Selection,
    testing::Values(SelectionCase{"blanks_at_both_ends", u"0123456789  word \n"_s, {10, 8}, {12, 4}},
        SelectionCase{"past_the_end", u"some text"_s, {5, 100}, {5, 4}},
        SelectionCase{"wholly_past_the_end", u"some text"_s, {9, 3}, {}},
        SelectionCase{"negative_start_keeps_the_end", u"some text"_s, {-3, 7}, {0, 4}},
        SelectionCase{"end_that_cant_be_counted", u"some text"_s, {5, most}, {5, 4}},
        SelectionCase{"start_that_cant_be_counted", u"some text"_s, {least, most}, {}},
        SelectionCase{"negative_length", u"some text"_s, {5, least}, {}},
        SelectionCase{"only_blanks", u"a \t\r\n\u00A0\u3000\u2028 b"_s, {1, 8}, {}},
        SelectionCase{"inside_an_emoji", u"\U0001F600x"_s, {1, 2}, {1, 2}},
        SelectionCase{"crlf_at_the_end", u"one\r\ntwo"_s, {0, 5}, {0, 3}},
        SelectionCase{"zero_width_space_is_no_blank", u"\u200Bx"_s, {0, 2}, {0, 2}}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(Codings, DropsOnlyExactDuplicates)
{
    TestLibrary library;
    const QList<Code> codes = library.makeCodes({u"One"_s, u"Two"_s});
    const Document document = library.paste(u"A"_s, u"some text here"_s);
    library.store.assignCode(codes[0], document, {0, 4});
    library.store.assignCode(codes[0], document, {0, 5}); // trimmed to the same
    library.store.assignCode(codes[1], document, {0, 4});
    library.store.assignCode(codes[0], document, {0, 9});
    EXPECT_EQ(library.store.codings(document).size(), 3);
    EXPECT_EQ(library.store.codingRevision().get(), 3);
    EXPECT_EQ(library.store.codeCounts()->value(codes[0].id), 2);

    const Coding coding = library.store.codings(document).first();
    library.store.removeCoding(coding);
    library.store.removeCoding(coding);
    EXPECT_EQ(library.store.codingRevision().get(), 5);
    EXPECT_EQ(library.store.codeCounts()->value(codes[0].id), 1);
}

TEST(Excerpts, ShowWholePassagesOldestFirstAndDropWhatLiesOutside)
{
    TestLibrary library;
    const Code code = library.makeCodes({u"One"_s}).first();
    const Document first = library.paste(u"A"_s, u"one\n\ntwo\r\nthree \U0001F600 end"_s);
    const Document second = library.paste(u"B"_s, u"other"_s);
    library.store.assignCode(code, second, {0, 5});
    library.store.assignCode(code, first, {0, 8});
    library.store.assignCode(code, first, {5, 13});
    for (const TextRange &range :
        {TextRange{-1, 3}, TextRange{0, 0}, TextRange{0, 1000}, TextRange{most, most}, TextRange{3, least}}) {
        Coding stray = library.storedCodings().first();
        stray.id = QUuid::createUuid();
        stray.start = range.location;
        stray.length = range.length;
        library.queue->write([&](Database &database) { stray.insert(database); });
    }
    QStringList snippets;
    for (const ExcerptHit &hit : library.store.excerpts(code.id))
        snippets.append(hit.documentTitle + u": "_s + hit.snippet.toString());
    EXPECT_EQ(snippets, (QStringList{u"B: other"_s, u"A: one  two"_s, u"A: two\r three \U0001F600"_s}));

    library.store.createProject(u"Other"_s); // whose documents these aren't
    EXPECT_TRUE(library.store.excerpts(code.id).isEmpty());
}

TEST(Reveal, AsksAnewEachTime)
{
    TestLibrary library;
    const Code code = library.makeCodes({u"One"_s}).first();
    const Document document = library.paste(u"A"_s, u"some text"_s);
    library.paste(u"B"_s, u"other"_s);
    library.store.assignCode(code, document, {5, 4});
    const ExcerptHit hit = library.store.excerpts(code.id).first();
    const auto sidebar = library.store.sidebarSelection().get();
    library.store.reveal(hit);
    EXPECT_EQ(library.store.revealRequest().get(), (RevealRequest{document.id, hit.id, {5, 4}, 1}));
    EXPECT_EQ(library.store.selectedDocumentID().get(), document.id);
    const ChangeCounter changes(library.store.revealRequest());
    library.store.reveal(hit);
    EXPECT_EQ(library.store.revealRequest()->value().token, 2);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(library.store.sidebarSelection().get(), sidebar);
}

TEST(CodingHint, ShowsForDocumentsWithoutCodingUntilDismissed)
{
    TestLibrary library;
    EXPECT_FALSE(library.store.shouldShowCodingHint());
    const Document document = library.paste(u"A"_s, u"some text"_s);
    EXPECT_TRUE(library.store.shouldShowCodingHint());
    library.store.assignCode(library.makeCodes({u"One"_s}).first(), document, {0, 4});
    EXPECT_FALSE(library.store.shouldShowCodingHint());
    library.store.removeCoding(library.store.codings(document).first());
    EXPECT_TRUE(library.store.shouldShowCodingHint());
    library.store.codingHintDismissed().set(true);
    EXPECT_FALSE(library.store.shouldShowCodingHint());
}

TEST(CodeCounts, AlwaysEqualACountOfTheTables)
{
    TestLibrary library;
    const QUuid home = library.store.project()->value().id;
    library.makeCodes({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    std::mt19937 random(3);
    for (int round = 0; round < 400; ++round) {
        const QList<Document> documents = library.store.documents().get();
        const QList<Code> codes = library.store.codes().get();
        const QList<Coding> codings = library.storedCodings();
        const auto any = [&](const auto &list) { return list.at(qsizetype(random() % size_t(list.size()))); };
        switch (documents.isEmpty() ? 0 : random() % 8) {
        case 0:
            library.store.addPastedDocument(u"title"_s, QString(40, u'x'));
            break;
        case 1:
            library.store.deleteDocument(any(documents));
            break;
        case 2:
            if (!codings.isEmpty())
                library.store.removeCoding(any(codings));
            break;
        case 3:
            if (codes.size() > 2 && random() % 4 == 0)
                library.store.mergeCodes(any(codes), any(codes));
            break;
        case 4:
            library.queue->write([&](Database &database) { // behind the store's back, on its own connection
                database.execute("UPDATE document SET projectID = ? WHERE rowid % 5 = 0",
                    {ValueEncoding::encoded(round % 2 ? QUuid() : home)});
            });
            library.store.refresh();
            break;
        default:
            library.store.assignCode(any(codes), any(documents), {qint64(random() % 30), 1 + qint64(random() % 9)});
        }
        const auto counted = library.queue->read([&](Database &database) {
            QHash<QUuid, qint64> counts;
            for (const Row &row : Row::fetchAll(database,
                     "SELECT c.codeID AS codeID, COUNT(*) AS n FROM coding c JOIN document d ON d.id = c.documentID "
                     "WHERE d.projectID = ? GROUP BY c.codeID",
                     {ValueEncoding::encoded(home)}))
                counts.insert(row.value<QUuid>("codeID").value(), row.value<qint64>("n").value());
            return counts;
        });
        ASSERT_EQ(library.store.codeCounts().get(), counted) << "round " << round;
    }
}
