#include "records/AppDatabase.h"
#include "records/database/Request.h"
#include "support/TestLibrary.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// A library with one coded passage in a document, and all kinds of results.
struct UsedLibrary : TestLibrary {
    UsedLibrary()
    {
        paste(u"A"_s, u"some text with words"_s);
        store.assignCode(makeCodes({u"One"_s}).first(), document(u"A"_s), {0, 9});
        store.searchText().set(u"some"_s);
        std::ignore = store.visibleDocuments();
        store.runQuery({.codeIDs = {code(u"One"_s).id}, .mode = QuerySpec::Mode::any, .textFilter = {}});
        store.runWordFrequency(WordFrequency::AllDocuments{}, 3, true, 10);
        store.selectWordFreqTerm(u"words"_s);
    }
    void execute(const QByteArray &sql) const
    {
        queue->write([&](Database &database) { database.execute(sql); });
    }
};

} // namespace

TEST(StartUp, OpensTheOldestProjectWhateverWasOpenLast)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"vorn.sqlite"_s);
    TestLibrary({}, AppDatabase::openQueue(path)).store.createProject(u"Second"_s);
    const TestLibrary again({}, AppDatabase::openQueue(path));
    EXPECT_EQ(again.store.project()->value().name, u"Untitled Study"_s);
    EXPECT_EQ(again.store.projects()->size(), 2);
}

TEST(Projects, SwitchingGivesTheMemoryOfTheTextsBack)
{
    UsedLibrary library;
    const QString text = library.document(u"A"_s).text;
    EXPECT_FALSE(text.isDetached());
    library.store.createProject(u"Other"_s);
    EXPECT_TRUE(text.isDetached()) << "somebody else still holds it";
    EXPECT_EQ(library.store.searchText().get(), u"some"_s);
}

TEST(Projects, ThatCannotBeReadDoNotShowTheDocumentsOfAnother)
{
    UsedLibrary library;
    LibraryStore &store = library.store;
    const Document document = library.document(u"A"_s);
    const Project first = store.project()->value();
    const Project second = store.createProject(u"Second"_s).value();
    library.paste(u"Of the second"_s, u"other text"_s);
    const Code code = library.makeCodes({u"Of the second"_s}).first();
    store.selectProject(first.id);
    library.execute("UPDATE document SET addedAt = 'never' WHERE title = 'Of the second'");
    store.selectProject(second.id);
    EXPECT_EQ(store.lastError().get(), u"The value of column “addedAt” can't be read: it isn't a date."_s);
    EXPECT_TRUE(store.documents()->isEmpty());
    EXPECT_EQ(store.selectedDocumentID().get(), std::nullopt);
    store.assignCode(code, document, {0, 4}); // a coding between projects would stand in no list
    EXPECT_EQ(library.storedCodings().size(), 1);
}

TEST(Refresh, KeepsWhatCantBeReadAndTellsWhy)
{
    UsedLibrary library;
    LibraryStore &store = library.store;
    library.execute("UPDATE document SET addedAt = 'never'");
    store.refresh();
    EXPECT_NE(store.lastError().get(), std::nullopt);
    EXPECT_EQ(store.documents()->size(), 1);
    library.execute("UPDATE document SET addedAt = '2026-01-01'");
    store.lastError().set({});
    store.refresh();
    EXPECT_EQ(store.lastError().get(), std::nullopt);
    EXPECT_EQ(store.documents()->first().addedAt.date(), QDate(2026, 1, 1));

    library.execute("DROP TABLE coding");
    store.refresh();
    EXPECT_TRUE(store.lastError()->value_or(QString()).startsWith(u"no such table: coding - while executing `"_s));
    EXPECT_EQ(store.codeCounts()->value(library.code(u"One"_s).id), 1);
    const ChangeCounter documents(store.documents());
    const ChangeCounter codes(store.codes());
    store.refresh();
    EXPECT_EQ(documents.count() + codes.count(), 0) << "nothing is new";
}
