#include "records/database/Request.h"
#include "support/TestLibrary.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Projects, AreMadeWithTrimmedNamesAndMayBearTheSame)
{
    TestLibrary library;
    const auto before = library.store.sidebarSelection().get();
    EXPECT_EQ(library.store.createProject(u" \n\t"_s), std::nullopt);
    EXPECT_EQ(library.store.sidebarSelection().get(), before);
    const auto first = library.store.createProject(u"  Study \n"_s);
    const auto second = library.store.createProject(u"Study"_s);
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->name, u"Study"_s);
    EXPECT_NE(first->id, second->id);
    EXPECT_LT(first->createdAt, first->modifiedAt); // two readings of the clock
    EXPECT_EQ(library.store.projects()->size(), 3);
    EXPECT_EQ(library.store.project().get(), second);
    EXPECT_EQ(library.store.sidebarSelection().get(), SidebarSelection(ProjectSelection{second->id}));
}

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

TEST(Projects, RenamingTouchesOnlyNameAndModification)
{
    TestLibrary library;
    const Project project = library.store.project()->value();
    library.store.renameProject(project, u"  "_s);
    EXPECT_EQ(library.store.project()->value(), project);
    library.store.renameProject(project, u" New name "_s);
    const Project renamed = library.store.project()->value();
    EXPECT_EQ(renamed.name, u"New name"_s);
    EXPECT_EQ(renamed.createdAt, project.createdAt);
    EXPECT_GT(renamed.modifiedAt, project.modifiedAt);
    EXPECT_EQ(library.store.projects()->first(), renamed);
}

TEST(Documents, PastedTextIsStoredAsItStandsAndSelected)
{
    TestLibrary library;
    library.store.addPastedDocument(u""_s, u"hello world"_s);
    const Document document = library.store.documents()->first();
    EXPECT_EQ(document.title, u"Untitled Document"_s);
    EXPECT_EQ(document.sourceKind, u"paste"_s);
    EXPECT_EQ(document.wordCount, 2);
    EXPECT_EQ(document.charCount, 11);
    EXPECT_EQ(document.memo, std::nullopt);
    EXPECT_EQ(library.store.selectedDocumentID().get(), document.id);

    const QString nasty = u"\r\n \0\u2028\U0001F468\u200D\U0001F469\uFFFC"_s;
    EXPECT_EQ(library.paste(u" "_s, nasty).text, nasty); // a title of blanks is one
}

TEST(Documents, RenamingAndMemosKeepTheRest)
{
    TestLibrary library;
    Document document = library.paste(u"A"_s, u"text"_s);
    library.paste(u"B"_s, u"text"_s);
    library.store.renameDocument(document, u"  \n"_s);
    EXPECT_EQ(library.document(u"A"_s), document);
    library.store.renameDocument(document, u" Ä "_s);
    document.title = u"Ä"_s;
    EXPECT_EQ(library.document(u"Ä"_s), document);

    const ChangeCounter changes(library.store.documents());
    library.store.setDocumentMemo(document, u" "_s);
    EXPECT_EQ(library.document(u"Ä"_s).memo, u" "_s);
    library.store.setDocumentMemo(document, u" "_s);
    EXPECT_EQ(changes.count(), 2); // in place, announced without a comparison
    library.store.setDocumentMemo(document, {});
    const auto stored = library.queue->read(
        [&](Database &database) { return Document::filter(Column("id") == document.id).fetchOne(database); });
    EXPECT_EQ(stored, document);
    EXPECT_EQ(library.store.documents()->last(), document); // the order stays
}

TEST(Documents, DeletingTakesTheCodingsAndNothingElse)
{
    TestLibrary library;
    const Document gone = library.paste(u"gone"_s, u"some text"_s);
    const Document stays = library.paste(u"stays"_s, u"some text"_s);
    const Code code = library.makeCodes({u"One"_s}).first();
    library.store.assignCode(code, gone, {0, 4});
    library.store.assignCode(code, stays, {0, 4});
    const QList<ExcerptHit> hits = library.store.excerpts(code.id);
    const qint64 revision = library.store.codingRevision().get();

    library.store.reveal(hits.at(1));
    library.store.deleteDocument(gone);
    EXPECT_TRUE(library.store.revealRequest().get()); // it points into the other document
    EXPECT_EQ(library.storedCodings().size(), 1);
    EXPECT_EQ(library.store.codingRevision().get(), revision + 1);
    EXPECT_EQ(library.store.codeCounts()->value(code.id), 1);
    library.store.deleteDocument(stays);
    EXPECT_FALSE(library.store.revealRequest().get());
    EXPECT_FALSE(library.store.selectedDocumentID().get());
    EXPECT_TRUE(library.store.codeCounts()->isEmpty());
    EXPECT_EQ(library.store.codes()->size(), 1);
}

TEST(Documents, AFailedDeleteIsToldAndChangesNothing)
{
    TestLibrary library;
    const Document document = library.paste(u"A"_s, u"some text"_s);
    library.store.assignCode(library.makeCodes({u"One"_s}).first(), document, {0, 4});
    library.queue->write([](Database &database) {
        database.execute("CREATE TABLE guard (id TEXT REFERENCES document(id))");
        database.execute("INSERT INTO guard SELECT id FROM document");
    });
    const qint64 revision = library.store.codingRevision().get();
    library.store.deleteDocument(document);
    EXPECT_EQ(library.store.lastError().get(),
        u"FOREIGN KEY constraint failed - while executing `DELETE FROM \"document\" WHERE \"id\" = ?`"_s);
    EXPECT_EQ(library.storedCodings().size(), 1);
    EXPECT_EQ(library.store.codingRevision().get(), revision);
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

TEST(DocumentSearch, FindsTheSameLetterByLetterAsAtOnce)
{
    TestLibrary library;
    library.paste(u"Interview one"_s, u"nothing"_s);
    library.paste(u"two"_s, u"The INTERVIEWER asked. ΣΊΣΥΦΟΣ"_s);
    library.paste(u"three"_s, u"\u0130stanbul \U00010400 inter"_s);
    const auto found = [&](const QString &text) {
        library.store.searchText().set(text);
        QStringList titles;
        for (const Document &document : library.store.visibleDocuments())
            titles.append(document.title);
        return titles;
    };
    const QStringList all{u"three"_s, u"two"_s, u"Interview one"_s};
    EXPECT_EQ(found(u"  "_s), all);
    EXPECT_EQ(found(u"i"_s), all);
    EXPECT_EQ(found(u"INTER "_s), all);
    EXPECT_EQ(found(u"\t interv"_s), (QStringList{u"two"_s, u"Interview one"_s}));
    EXPECT_EQ(found(u"interviewer"_s), QStringList{u"two"_s});
    EXPECT_EQ(found(u"inter"_s), all); // shorter again: the earlier hits don't bound it
    EXPECT_EQ(found(u"σίσυφοσ"_s), QStringList{u"two"_s}); // one rule for every sigma
    EXPECT_EQ(found(u"i\u0307STAN"_s), QStringList{u"three"_s});
    EXPECT_EQ(found(u"\U00010428"_s), QStringList{u"three"_s});
    EXPECT_EQ(found(u"inter\n"_s), QStringList{}); // a line break isn't trimmed
    library.store.renameDocument(library.document(u"two"_s), u"inter\n x"_s);
    EXPECT_EQ(found(u"inter\n"_s), QStringList{u"inter\n x"_s});
}
