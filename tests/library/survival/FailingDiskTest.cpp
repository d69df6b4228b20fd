#include "support/FailingDisk.h"
#include "library/survival/Operations.h"
#include "records/AppDatabase.h"
#include "records/database/Request.h"
#include "support/Cases.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

using namespace Qt::StringLiterals;
using Kind = FailingDisk::Kind;

namespace {

/// Another program has the file to itself.
struct Locked {
    explicit Locked(const QString &path) : other(path)
    {
        other.writeWithoutTransaction([](Database &database) { database.execute("BEGIN EXCLUSIVE TRANSACTION"); });
    }

    DatabaseQueue other;
};

struct Disaster {
    const char *name;
    std::shared_ptr<void> (*strike)(const Workplace &place); ///< over when what it returns is gone
    bool mayBeSurvived = false; ///< by a small write
    bool makesAnotherUserOfRoot = false;
};

class LibraryInADisaster : public testing::TestWithParam<Disaster> {
protected:
    [[nodiscard]] QString digestOfFile() const
    {
        DatabaseQueue queue(place.libraryFile());
        EXPECT_EQ(faultsOf(queue), QString());
        return digestOf(queue);
    }

    /// What the library holds when nothing went wrong.
    [[nodiscard]] QString digestAfter(const Operation &operation)
    {
        static QHash<QByteArray, QString> known;
        QString &digest = known[operation.name];
        if (digest.isEmpty()) {
            TestLibrary undisturbed({}, place.restored());
            operation.perform(undisturbed, place);
            digest = digestOf(*undisturbed.queue);
        }
        return digest;
    }

    /// What the store shows is what a new start would show.
    void expectTruth(TestLibrary &library) const
    {
        TestLibrary fresh({}, AppDatabase::openQueue(place.libraryFile()));
        library.store.refresh();
        EXPECT_EQ(library.store.projects().get(), fresh.store.projects().get());
        if (library.store.project().get() != fresh.store.project().get())
            return;
        EXPECT_EQ(library.store.documents().get(), fresh.store.documents().get());
        EXPECT_EQ(library.store.codes().get(), fresh.store.codes().get());
        EXPECT_EQ(library.store.codeCounts().get(), fresh.store.codeCounts().get());
    }

    void expectComplaint(const Operation &operation, const QString &complaint) const
    {
        // When not even the list can be read afterwards, that is what is told in the end.
        if (!operation.complaint || complaint.contains(u"PRAGMA data_version"_s))
            return;
        EXPECT_THAT(complaint.toStdString(), testing::StartsWith(operation.complaint));
        EXPECT_GT(complaint.size(), qsizetype(qstrlen(operation.complaint)));
    }

    Workplace place;
};

} // namespace

TEST_P(LibraryInADisaster, StaysAsItWasAndTheProgramAtWork)
{
    if (GetParam().makesAnotherUserOfRoot && ::geteuid() == 0 && !isReachableForAll(place.library()))
        GTEST_SKIP() << "another user can't reach the temporary folder, and root may write every folder";
    for (const Operation &operation : operations()) {
        SCOPED_TRACE(operation.name);
        TestLibrary library({}, place.restored());
        const QString before = digestOfFile();
        {
            const auto disaster = GetParam().strike(place);
            operation.perform(library, place);
        }
        const QString found = digestOfFile();
        const QString complaint = library.store.lastError()->value_or(QString());
        EXPECT_EQ(place.leftovers(), QStringList());
        expectTruth(library);
        if (GetParam().mayBeSurvived && found != before) {
            EXPECT_EQ(complaint, QString());
        } else {
            EXPECT_EQ(found, before);
            expectComplaint(operation, complaint);
            EXPECT_EQ(library.store.statusMessage().get(), std::nullopt);
            library.store.lastError().set({});
            operation.perform(library, place); // the disk is well again
        }
        EXPECT_EQ(library.store.lastError().get(), std::nullopt);
        EXPECT_EQ(digestOfFile(), digestAfter(operation));
    }
}

INSTANTIATE_TEST_SUITE_P(, LibraryInADisaster,
    testing::Values(Disaster{"AnotherProgramHasTheFile",
                        [](const Workplace &place) -> std::shared_ptr<void> {
                            return std::make_shared<Locked>(place.libraryFile());
                        }},
        Disaster{"DiskIsFull",
            [](const Workplace &place) -> std::shared_ptr<void> {
                return std::make_shared<FailingDisk>(Kind::full, place.library());
            }},
        Disaster{"DiskBecomesFull",
            [](const Workplace &place) -> std::shared_ptr<void> {
                return std::make_shared<FailingDisk>(Kind::full, place.library(), 30'000);
            },
            true},
        Disaster{"FolderIsClosed",
            [](const Workplace &place) -> std::shared_ptr<void> {
                return std::make_shared<FailingDisk>(Kind::closed, place.library());
            },
            false, true},
        Disaster{"FolderIsGone",
            [](const Workplace &place) -> std::shared_ptr<void> {
                return std::make_shared<FailingDisk>(Kind::gone, place.library());
            }}),
    rowName);

namespace {

class UnstoredProject : public testing::TestWithParam<Operation> { };

/// What the store has and the file hasn't.
class Unstored : public testing::Test {
protected:
    Workplace place;
    TestLibrary library{{}, place.restored()};
    LibraryStore &store = library.store;
};

} // namespace

TEST_P(UnstoredProject, IsStoredWithTheFirstThingThatIsPutIntoIt)
{
    Workplace place;
    {
        TestLibrary library({}, place.restored());
        {
            const FailingDisk disk(Kind::full, place.library());
            library.store.createProject(u"Interviews"_s);
        }
        ASSERT_EQ(library.store.projects()->size(), 1);
        GetParam().perform(library, place);
        EXPECT_EQ(library.store.lastError().get(), std::nullopt);
        EXPECT_EQ(library.store.projects()->size(), 2);
    }
    TestLibrary again({}, AppDatabase::openQueue(place.libraryFile()));
    EXPECT_EQ(faultsOf(*again.queue), QString());
    ASSERT_EQ(again.store.projects()->size(), 2);
    again.store.selectProject(again.store.projects()->last().id);
    EXPECT_EQ(again.store.project()->value().name, u"Interviews"_s);
    EXPECT_GT(again.store.documents()->size() + again.store.codes()->size(), 0);
}

INSTANTIATE_TEST_SUITE_P(, UnstoredProject, testing::ValuesIn(operations().first(4)), rowName);

TEST_F(Unstored, CodeTakesNoPassages)
{
    const Code unstored = [&] {
        const FailingDisk disk(Kind::full, place.library());
        return store.createCode(u"New"_s).value();
    }();
    store.assignCode(unstored, library.document(u"First"_s), {0, 4});
    EXPECT_EQ(faultsOf(*library.queue), QString());
    EXPECT_FALSE(store.codeCounts()->contains(unstored.id));
}

TEST_F(Unstored, DocumentTakesNoPassages)
{
    const Document gone = library.document(u"First"_s);
    DatabaseQueue(place.libraryFile()).write([&](Database &database) {
        Document::deleteOne(database, gone.id);
        Coding::filter(Column("documentID") == gone.id).deleteAll(database);
    });
    store.assignCode(library.code(u"Gamma"_s), gone, {0, 4});
    EXPECT_EQ(faultsOf(*library.queue), QString());
}

TEST_F(Unstored, MemoOutlivesWhatElseFailsAndIsStoredWithTheNextOne)
{
    const Document first = library.document(u"First"_s);
    const Document second = library.document(u"Second"_s);
    const Code alpha = library.code(u"Alpha"_s);
    const Code gamma = library.code(u"Gamma"_s);
    const auto memos = [this] {
        TestLibrary fresh({}, AppDatabase::openQueue(place.libraryFile()));
        return QStringList{
            fresh.code(u"Alpha"_s).memo.value_or(QString()), fresh.document(u"First"_s).memo.value_or(QString())};
    };
    {
        const Locked otherProgram(place.libraryFile());
        store.setCodeMemo(alpha, u"about alpha"_s);
        store.setDocumentMemo(first, u"about the first"_s);
        store.deleteCode(alpha);
        store.mergeCodes(alpha, gamma);
        EXPECT_TRUE(store.saveUnwrittenMemos());
    }
    DatabaseQueue(place.libraryFile()).write([](Database &database) {
        database.execute("UPDATE document SET memo = 'newer' WHERE title = 'First'");
    });
    store.setDocumentMemo(second, u"about the second"_s);
    EXPECT_EQ(memos(), (QStringList{u"about alpha"_s, u"newer"_s})) << "what another program wrote isn't written over";
    EXPECT_TRUE(store.saveUnwrittenMemos());
    EXPECT_EQ(store.documentMemo(first.id), u"about the first"_s);
    store.setDocumentMemo(first, u"both"_s);
    EXPECT_EQ(store.saveUnwrittenMemos(), std::nullopt);
    EXPECT_EQ(memos().last(), u"both"_s);
}

TEST_F(Unstored, MemoIsToldOnceAndStoredWhenItIsGivenAgain)
{
    const Document document = library.document(u"First"_s);
    {
        const Locked otherProgram(place.libraryFile());
        store.setDocumentMemo(document, u"a"_s);
        EXPECT_TRUE(store.lastError()->value_or(QString()).startsWith(u"The memo couldn't be saved: "_s));
        store.lastError().set({});
        store.setDocumentMemo(document, u"ab"_s);
        EXPECT_EQ(store.lastError().get(), std::nullopt) << "an alert at each letter";
        EXPECT_FALSE(store.isMemoWritten(document.id));
    }
    store.setDocumentMemo(document, u"ab"_s); // equal to what is listed, but not to what is in the file
    EXPECT_TRUE(store.isMemoWritten(document.id));
    TestLibrary fresh({}, AppDatabase::openQueue(place.libraryFile()));
    EXPECT_EQ(fresh.document(u"First"_s).memo, u"ab"_s);
}
