#include "library/PassageTrimming.h"
#include "records/database/Request.h"
#include "support/TestLibrary.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 highest = std::numeric_limits<qint64>::max();
constexpr qint64 lowest = std::numeric_limits<qint64>::min();

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
        SelectionCase{"end_that_cant_be_counted", u"some text"_s, {5, highest}, {5, 4}},
        SelectionCase{"start_that_cant_be_counted", u"some text"_s, {lowest, highest}, {}},
        SelectionCase{"negative_length", u"some text"_s, {5, lowest}, {}},
        SelectionCase{"only_blanks", u"a \t\r\n\u00A0\u3000\u2028 b"_s, {1, 8}, {}},
        SelectionCase{"inside_an_emoji", u"\U0001F600x"_s, {1, 2}, {1, 2}},
        SelectionCase{"crlf_at_the_end", u"one\r\ntwo"_s, {0, 5}, {0, 3}},
        SelectionCase{"zero_width_space_is_no_blank", u"\u200Bx"_s, {0, 2}, {0, 2}}),
    [](const auto &row) { return std::string(row.param.name); });

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
        {TextRange{-1, 3}, TextRange{0, 0}, TextRange{0, 1000}, TextRange{highest, highest}, TextRange{3, lowest}}) {
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
    LibraryStore &store = library.store;
    const Code code = library.makeCodes({u"One"_s}).first();
    const Document document = library.paste(u"A"_s, u"some text"_s);
    library.paste(u"B"_s, u"other"_s);
    store.assignCode(code, document, {5, 4});
    const ExcerptHit hit = store.excerpts(code.id).first();
    const auto sidebar = store.sidebarSelection().get();
    store.reveal(hit);
    EXPECT_EQ(store.revealRequest().get(), (RevealRequest{document.id, hit.id, {5, 4}, 1}));
    EXPECT_EQ(store.selectedDocumentID().get(), document.id);
    store.reveal(hit);
    EXPECT_EQ(store.revealRequest()->value().token, 2);
    EXPECT_EQ(store.sidebarSelection().get(), sidebar);

    store.runQuery({.codeIDs = {code.id}, .mode = QuerySpec::Mode::any, .textFilter = u" TEXT"_s});
    const QueryResult result = store.queryResults()->first();
    store.reveal(result);
    EXPECT_EQ(store.revealRequest().get(), (RevealRequest{document.id, result.id, {5, 4}, 3}));
    store.runWordFrequency(WordFrequency::AllDocuments{}, 3, false, 50);
    store.selectWordFreqTerm(u"other"_s);
    store.reveal(store.wordFreqOccurrences()->first());
    EXPECT_EQ(store.revealRequest()->value().range, (TextRange{0, 5}));

    store.deleteDocument(document);
    EXPECT_TRUE(store.revealRequest().get()); // it points into the other document
    store.deleteDocument(library.document(u"B"_s));
    EXPECT_FALSE(store.revealRequest().get());
}

TEST(CodingHint, CanBeDismissed)
{
    TestLibrary library;
    library.paste(u"A"_s, u"some text"_s);
    EXPECT_TRUE(library.store.shouldShowCodingHint());
    library.store.codingHintDismissed().set(true);
    EXPECT_FALSE(library.store.shouldShowCodingHint());
}
