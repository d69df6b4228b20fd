#include "records/AppDatabase.h"
#include "records/database/Request.h"
#include "support/TestLibrary.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(StartUp, OpensTheOldestProjectWhateverWasOpenLast)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"vorn.sqlite"_s);
    {
        TestLibrary first({}, AppDatabase::openQueue(path));
        EXPECT_EQ(first.store.projects().get(), QList<Project>{first.store.project()->value()});
        first.store.createProject(u"Second"_s);
        first.paste(u"in the second"_s, u"text"_s);
    }
    TestLibrary again({}, AppDatabase::openQueue(path));
    EXPECT_EQ(again.store.project()->value().name, u"Untitled Study"_s);
    EXPECT_EQ(again.store.projects()->size(), 2);
    EXPECT_TRUE(again.store.documents()->isEmpty());
    EXPECT_EQ(again.store.projectDocCounts()->size(), 1); // the empty project has no entry
}

TEST(Refresh, TellsNobodyWhenNothingIsNew)
{
    TestLibrary library;
    library.paste(u"A"_s, u"some text"_s);
    const Code code = library.makeCodes({u"One"_s}).first();
    library.store.assignCode(code, library.document(u"A"_s), {0, 4});
    library.store.refresh();
    const ChangeCounter documents(library.store.documents());
    const ChangeCounter codes(library.store.codes());
    const ChangeCounter counts(library.store.codeCounts());
    const ChangeCounter projects(library.store.projects());
    const ChangeCounter docCounts(library.store.projectDocCounts());
    const ChangeCounter selected(library.store.selectedDocumentID());
    library.store.refresh();
    EXPECT_EQ(
        documents.count() + codes.count() + counts.count() + projects.count() + docCounts.count() + selected.count(),
        0);
}

TEST(Refresh, SeesWhatAnotherProcessHasWrittenAndFindsTheSelectionANewPlace)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"vorn.sqlite"_s);
    TestLibrary library({}, AppDatabase::openQueue(path));
    library.paste(u"old"_s, u"text"_s);
    const Document newest = library.paste(u"new"_s, u"text"_s);
    EXPECT_EQ(library.store.selectedDocumentID().get(), newest.id);

    DatabaseQueue other(path);
    other.write([&](Database &database) { Document::deleteOne(database, newest.id); });
    library.store.refresh();
    EXPECT_EQ(library.store.selectedDocumentID().get(), library.document(u"old"_s).id);
    other.write([](Database &database) { Document::all().deleteAll(database); });
    library.store.refresh();
    EXPECT_EQ(library.store.selectedDocumentID().get(), std::nullopt);
}

TEST(Refresh, KeepsTheDocumentsAndTellsWhyWhenTheyCantBeRead)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"vorn.sqlite"_s);
    TestLibrary library({}, AppDatabase::openQueue(path));
    library.paste(u"A"_s, u"text"_s);
    DatabaseQueue other(path);
    other.write([](Database &database) { database.execute("UPDATE document SET addedAt = 'never'"); });
    library.store.refresh();
    EXPECT_EQ(library.store.lastError().get(), u"The value of column “addedAt” can't be read: it isn't a date."_s);
    EXPECT_EQ(library.store.documents()->size(), 1);

    other.write([](Database &database) { database.execute("UPDATE document SET addedAt = '2026-01-01'"); });
    library.store.lastError().set({});
    library.store.refresh();
    EXPECT_EQ(library.store.lastError().get(), std::nullopt);
    EXPECT_EQ(library.store.documents()->first().addedAt.date(), QDate(2026, 1, 1));
}

TEST(Refresh, ReportsAFailedCountAndKeepsTheOldOne)
{
    TestLibrary library;
    const Code code = library.makeCodes({u"One"_s}).first();
    library.store.assignCode(code, library.paste(u"A"_s, u"some text"_s), {0, 4});
    library.queue->write([](Database &database) { database.execute("DROP TABLE coding"); });
    library.store.refresh();
    EXPECT_TRUE(
        library.store.lastError()->value_or(QString()).startsWith(u"no such table: coding - while executing `"_s));
    EXPECT_EQ(library.store.codeCounts()->value(code.id), 1);
}
