#include "support/TestLibrary.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString terms(const LibraryStore &store)
{
    QStringList result;
    for (const WordFrequency::Item &item : store.wordFreqItems().get())
        result.append(item.term + u':' + QString::number(item.count));
    return result.join(u' ');
}

} // namespace

TEST(Query, RunsOverTheCurrentProjectAloneAndAnswersAlsoWithNothing)
{
    TestLibrary library;
    LibraryStore &store = library.store;
    const Code code = library.makeCodes({u"One"_s}).first();
    const Document older = library.paste(u"older"_s, u"some text"_s);
    const Document newer = library.paste(u"newer"_s, u"more text"_s);
    store.assignCode(code, older, {5, 4});
    store.assignCode(code, newer, {5, 4});
    store.assignCode(code, newer, {0, 4});
    const auto sidebar = store.sidebarSelection().get();
    store.runQuery({});
    EXPECT_EQ(store.sidebarSelection().get(), sidebar);
    EXPECT_EQ(store.querySummary(), QString());

    store.runQuery({.codeIDs = {code.id}, .mode = QuerySpec::Mode::any, .textFilter = u" TEXT\n"_s});
    ASSERT_EQ(store.queryResults()->size(), 2);
    EXPECT_EQ(store.queryResults()->first().documentID, newer.id); // in the order of the list
    EXPECT_EQ(store.sidebarSelection().get(), SidebarSelection(QuerySelection{}));
    store.renameCode(code, u"Renamed"_s);
    EXPECT_EQ(store.querySummary(), u"Renamed · any mention · contains “TEXT”"_s);
    store.reveal(store.queryResults()->last());
    EXPECT_EQ(store.revealRequest()->value().range, (TextRange{5, 4}));

    store.createProject(u"Other"_s);
    store.runQuery({.codeIDs = {code.id}, .mode = QuerySpec::Mode::any, .textFilter = {}});
    EXPECT_TRUE(store.queryResults()->isEmpty());
    EXPECT_TRUE(store.activeQuery().get());
}

TEST(WordCount, CountsTheChosenScope)
{
    TestLibrary library;
    LibraryStore &store = library.store;
    const Document first = library.paste(u"first"_s, u"apple pear apple"_s);
    library.paste(u"second"_s, u"apple plum 研究方法"_s);
    const Code code = library.makeCodes({u"Fruit"_s}).first();
    store.assignCode(code, first, {8, 5}); // "ar ap": parts of two words
    store.assignCode(code, first, {7, 3});

    store.runWordFrequency(WordFrequency::AllDocuments{}, 3, true, 50);
    EXPECT_EQ(terms(store), u"apple:3 pear:1 plum:1 方法:1 研究:1 究方:1"_s);
    EXPECT_EQ(store.wordFreqScopeLabel().get(), u"All documents"_s);
    EXPECT_EQ(store.sidebarSelection().get(), SidebarSelection(WordFreqSelection{}));
    store.runWordFrequency(WordFrequency::AllDocuments{}, 5, true, 1);
    EXPECT_EQ(terms(store), u"apple:3"_s);

    store.runWordFrequency(WordFrequency::InDocument{first.id}, 3, true, 50);
    EXPECT_EQ(terms(store), u"apple:2 pear:1"_s);
    EXPECT_EQ(store.wordFreqScopeLabel().get(), u"first"_s);
    store.runWordFrequency(WordFrequency::InCode{code.id}, 3, true, 50);
    EXPECT_EQ(terms(store), u"apple:1 pear:1"_s);
    EXPECT_EQ(store.wordFreqScopeLabel().get(), u"Fruit"_s);
    store.selectWordFreqTerm(u"apple"_s);
    ASSERT_EQ(store.wordFreqOccurrences()->size(), 1);
    EXPECT_EQ(store.wordFreqOccurrences()->first().range, (TextRange{11, 5}));
    EXPECT_EQ(store.wordFreqOccurrences()->first().context, u"apple pear apple"_s);

    store.runWordFrequency(WordFrequency::InCode{QUuid::createUuid()}, 3, true, 50);
    EXPECT_EQ(terms(store), QString());
    EXPECT_EQ(store.wordFreqScopeLabel().get(), u"Code"_s);
    EXPECT_TRUE(store.wordFreqOccurrences()->isEmpty());
    EXPECT_EQ(store.wordFreqSelectedTerm().get(), std::nullopt);
    store.runWordFrequency(WordFrequency::InDocument{QUuid::createUuid()}, 3, true, 50);
    EXPECT_EQ(store.wordFreqScopeLabel().get(), u"Document"_s);
}

TEST(WordCount, FollowsDocumentsThatComeAndGo)
{
    TestLibrary library;
    const auto count = [&] {
        library.store.runWordFrequency(WordFrequency::AllDocuments{}, 3, true, 50);
        return terms(library.store);
    };
    library.paste(u"first"_s, u"apple"_s);
    EXPECT_EQ(count(), u"apple:1"_s);
    library.paste(u"second"_s, u"apple pear"_s);
    EXPECT_EQ(count(), u"apple:2 pear:1"_s);
    library.store.deleteDocument(library.document(u"first"_s));
    EXPECT_EQ(count(), u"apple:1 pear:1"_s);
    const QUuid home = library.store.project()->value().id;
    library.store.createProject(u"Other"_s);
    EXPECT_EQ(count(), QString());
    library.store.selectProject(home);
    EXPECT_EQ(count(), u"apple:1 pear:1"_s);
}

TEST(WordCount, ContextReachesTwentyEightBackAndNinetyOn)
{
    TestLibrary library;
    const QString before(40, u'.');
    const QString behind(100, u'-');
    library.paste(u"A"_s, before + u"word"_s + behind);
    library.store.runWordFrequency(WordFrequency::AllDocuments{}, 3, true, 50);
    library.store.selectWordFreqTerm(u"word"_s);
    EXPECT_EQ(library.store.wordFreqOccurrences()->first().context, QString(28, u'.') + u"word"_s + QString(90, u'-'));
    library.store.reveal(library.store.wordFreqOccurrences()->first());
    EXPECT_EQ(library.store.revealRequest()->value().range, (TextRange{40, 4}));
}
