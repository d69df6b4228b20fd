#include "records/database/Request.h"
#include "support/TestLibrary.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Projects, SwitchingLeavesNoResultOfTheOtherProjectBehind)
{
    TestLibrary library;
    LibraryStore &store = library.store;
    const Project home = store.project()->value();
    const Document document = library.paste(u"A"_s, u"some text with words"_s);
    const Code code = library.makeCodes({u"One"_s}).first();
    store.assignCode(code, document, {0, 4});
    store.runWordFrequency(WordFrequency::AllDocuments{}, 3, true, 10);
    store.selectWordFreqTerm(u"words"_s);
    store.runQuery({.codeIDs = {code.id}, .mode = QuerySpec::Mode::any, .textFilter = {}});
    store.reveal(store.excerpts(code.id).first());
    store.searchText().set(u"some"_s);

    // A click on the current project only goes back to its documents.
    store.selectProject(home.id);
    EXPECT_EQ(store.sidebarSelection().get(), SidebarSelection(ProjectSelection{home.id}));
    EXPECT_EQ(store.queryResults()->size(), 1);
    EXPECT_EQ(store.selectedDocumentID().get(), document.id);

    store.createProject(u"Other"_s);
    EXPECT_TRUE(store.queryResults()->isEmpty() && store.wordFreqItems()->isEmpty()
        && store.wordFreqOccurrences()->isEmpty() && store.documents()->isEmpty() && store.codes()->isEmpty());
    EXPECT_FALSE(store.activeQuery().get() || store.wordFreqSelectedTerm().get() || store.revealRequest().get()
        || store.selectedDocumentID().get());
    EXPECT_EQ(store.searchText().get(), u"some"_s);

    const auto selection = store.sidebarSelection().get();
    store.selectProject(QUuid::createUuid());
    EXPECT_EQ(store.sidebarSelection().get(), selection);
    store.selectProject(home.id);
    EXPECT_EQ(store.selectedDocumentID().get(), document.id);
    EXPECT_EQ(store.codeCounts()->value(code.id), 1);
}

TEST(Projects, ThatCannotBeReadDoNotShowTheDocumentsOfAnother)
{
    TestLibrary library;
    LibraryStore &store = library.store;
    const Document document = library.paste(u"Of the first"_s, u"some text"_s);
    const Project first = store.project()->value();
    const Project second = store.createProject(u"Second"_s).value();
    library.paste(u"Of the second"_s, u"other text"_s);
    const Code code = library.makeCodes({u"Of the second"_s}).first();
    store.selectProject(first.id);
    library.queue->write([](Database &database) {
        database.execute("UPDATE document SET addedAt = 'never' WHERE title = 'Of the second'");
    });
    store.selectProject(second.id);
    EXPECT_NE(store.lastError().get(), std::nullopt);
    EXPECT_TRUE(store.documents()->isEmpty());
    EXPECT_EQ(store.selectedDocumentID().get(), std::nullopt);

    store.assignCode(code, document, {0, 4}); // a coding between projects would stand in no list
    EXPECT_TRUE(library.storedCodings().isEmpty());
}

TEST(Projects, SwitchingGivesTheMemoryOfTheTextsBack)
{
    TestLibrary library;
    LibraryStore &store = library.store;
    const QString text = library.paste(u"A"_s, u"some text with words"_s).text;
    const Code code = library.makeCodes({u"One"_s}).first();
    store.assignCode(code, store.documents()->first(), {0, 9});
    store.searchText().set(u"some"_s);
    (void)store.visibleDocuments();
    store.runQuery({.codeIDs = {code.id}, .mode = QuerySpec::Mode::any, .textFilter = {}});
    store.runWordFrequency(WordFrequency::AllDocuments{}, 3, true, 10);
    store.selectWordFreqTerm(u"words"_s);
    EXPECT_FALSE(text.isDetached());
    store.createProject(u"Other"_s);
    EXPECT_TRUE(text.isDetached()) << "somebody else still holds it";
}

TEST(Documents, WithOneIdentifierInTwoSpellingsKeepTheirTextsAndPassages)
{
    TestLibrary library;
    const Document document = library.paste(u"One"_s, u"the text of one"_s);
    library.store.assignCode(library.makeCodes({u"Code"_s}).first(), document, {4, 4});
    library.queue->write([&](Database &database) {
        database.execute(
            "INSERT INTO document SELECT ?, projectID, 'Two', 'a longer text of two', addedAt, sourceKind, "
            "wordCount, charCount, memo FROM document",
            {TextValue{document.id.toByteArray(QUuid::WithoutBraces)}});
    });
    library.store.createProject(u"Other"_s);
    library.store.selectProject(document.projectID); // reads them all
    library.store.setDocumentMemo(library.document(u"One"_s), u"memo"_s);
    library.store.refresh();
    EXPECT_EQ(library.document(u"One"_s).text, u"the text of one"_s);
    EXPECT_EQ(library.document(u"Two"_s).text, u"a longer text of two"_s);

    library.queue->write([](Database &database) { database.execute("DELETE FROM document WHERE title = 'One'"); });
    library.store.refresh();
    library.store.deleteDocument(library.document(u"Two"_s)); // which no identifier finds
    EXPECT_EQ(library.storedCodings().size(), 1);
}
