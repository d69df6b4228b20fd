#include "support/FailingDisk.h"
#include "library/survival/LibraryDigest.h"
#include "library/survival/Workplace.h"
#include "records/AppDatabase.h"
#include "records/database/Request.h"

#include <QFileInfo>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

struct Operation {
    const char *name;
    void (*perform)(TestLibrary &library, const Workplace &place);
    const char *complaint; ///< the beginning of what a failure says; null where failures show by themselves
};

const Operation deeds[] = {
    {"import of files",
        [](TestLibrary &library, const Workplace &place) {
            library.store.importURLs({QUrl::fromLocalFile(place.material(u"two.txt"_s))});
        },
        "two.txt: "},
    {"import of an archive",
        [](TestLibrary &library, const Workplace &place) { library.store.importQdpx(place.material(u"study.qdpx"_s)); },
        "Import failed: "},
    {"paste",
        [](TestLibrary &library, const Workplace &) {
            library.store.addPastedDocument(u"Pasted"_s, u"text "_s.repeated(3'000));
        },
        "The document couldn't be added: "},
    {"new code", [](TestLibrary &library, const Workplace &) { library.store.createCode(u"Delta"_s, u"#112233"_s); },
        nullptr},
    {"coding",
        [](TestLibrary &library, const Workplace &) {
            library.store.assignCode(library.code(u"Gamma"_s), library.document(u"First"_s), {5, 5});
        },
        nullptr},
    {"removal of a coding",
        [](TestLibrary &library, const Workplace &) {
            const QList<Coding> codings = library.store.codings(library.document(u"Second"_s));
            if (!codings.isEmpty())
                library.store.removeCoding(codings.first());
        },
        nullptr},
    {"nesting",
        [](TestLibrary &library, const Workplace &) {
            library.store.nestCode(library.code(u"Gamma"_s).id, library.code(u"Beta"_s).id);
        },
        nullptr},
    {"move to the top",
        [](TestLibrary &library, const Workplace &) { library.store.moveCodeToTopLevel(library.code(u"Beta"_s)); },
        nullptr},
    {"merge",
        [](TestLibrary &library, const Workplace &) {
            library.store.mergeCodes(library.code(u"Alpha"_s), library.code(u"Gamma"_s));
        },
        nullptr},
    {"deletion of a code",
        [](TestLibrary &library, const Workplace &) { library.store.deleteCode(library.code(u"Alpha"_s)); }, nullptr},
    {"deletion of a document",
        [](TestLibrary &library, const Workplace &) { library.store.deleteDocument(library.document(u"First"_s)); },
        ""},
    {"memo",
        [](TestLibrary &library, const Workplace &) {
            library.store.setDocumentMemo(library.document(u"First"_s), u"a thought "_s.repeated(700));
        },
        "The memo couldn't be saved: "},
    {"new name",
        [](TestLibrary &library, const Workplace &) {
            library.store.renameDocument(library.document(u"Second"_s), u"Third"_s);
        },
        nullptr},
    {"new project", [](TestLibrary &library, const Workplace &) { library.store.createProject(u"Other"_s); }, nullptr},
};

QString digestOfFile(const Workplace &place)
{
    DatabaseQueue queue(place.libraryFile());
    EXPECT_EQ(faultsOf(queue), QString());
    return digestOf(queue);
}

/// What the store shows is what a new start would show.
void expectTruth(TestLibrary &library, const Workplace &place)
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

/// A deed on the same library, undisturbed and while the disk fails.
class OperationOnFailingDisk {
public:
    OperationOnFailingDisk(const Operation &deed, Workplace &place) : m_deed(deed), m_place(place)
    {
        m_place.restoreLibrary();
        m_before = digestOfFile(m_place);
        TestLibrary library({}, AppDatabase::openQueue(m_place.libraryFile()));
        m_deed.perform(library, m_place);
        m_after = digestOfFile(m_place);
        EXPECT_NE(m_before, m_after);
    }

    /// Returns whether the deed was done in spite of all.
    template <typename Strike>
    bool happens(Strike strike)
    {
        m_place.restoreLibrary();
        TestLibrary library({}, AppDatabase::openQueue(m_place.libraryFile()));
        {
            const auto disaster = strike();
            m_deed.perform(library, m_place);
        }
        const QString found = digestOfFile(m_place);
        const QString complaint = library.store.lastError()->value_or(QString());
        EXPECT_EQ(m_place.leftovers(), QStringList());
        expectTruth(library, m_place);
        if (found == m_after) {
            EXPECT_EQ(complaint, QString());
            return true;
        }
        EXPECT_EQ(found, m_before);
        expectComplaint(complaint);
        EXPECT_EQ(library.store.statusMessage().get(), std::nullopt);
        library.store.lastError().set({});
        m_deed.perform(library, m_place); // the disk is well again, and so is the program
        EXPECT_EQ(digestOfFile(m_place), m_after);
        EXPECT_EQ(library.store.lastError().get(), std::nullopt);
        return false;
    }

private:
    void expectComplaint(const QString &complaint) const
    {
        if (!m_deed.complaint)
            return;
        // When not even the list can be read afterwards, that is what is told in the end.
        if (complaint.contains(u"PRAGMA data_version"_s))
            return;
        EXPECT_THAT(complaint.toStdString(), testing::StartsWith(m_deed.complaint));
        EXPECT_GT(complaint.size(), qsizetype(qstrlen(m_deed.complaint)));
        if (qEnvironmentVariableIsSet("VORN_SHOW"))
            std::printf("    %s\n", qPrintable(complaint));
    }

    const Operation &m_deed;
    Workplace &m_place;
    QString m_before;
    QString m_after;
};

/// Another program has the file to itself.
struct Locked {
    explicit Locked(const QString &path) : other(path)
    {
        other.writeWithoutTransaction([](Database &database) { database.execute("BEGIN EXCLUSIVE TRANSACTION"); });
    }

    DatabaseQueue other;
};

std::vector<Disaster> disastersOfLibraries()
{
    std::vector<Disaster> all = disasters();
    all.push_back({"AnotherProgramHasTheFile", false,
        [](Workplace &place, const QString &) { return std::make_shared<Locked>(place.libraryFile()); }});
    return all;
}

class FailingDisk : public testing::TestWithParam<Disaster> { };

} // namespace

TEST_P(FailingDisk, LeavesTheLibraryAsItWasAndTheProgramAtWork)
{
    Workplace place;
    if (GetParam().needsSmallDisk && !place.putOnSmallDisk(place.library(), 2'000))
        GTEST_SKIP() << "only root may have a disk of her own";
    for (const Operation &deed : deeds) {
        SCOPED_TRACE(deed.name);
        OperationOnFailingDisk attempt(deed, place);
        EXPECT_FALSE(attempt.happens([&] { return GetParam().strike(place, place.library()); }));
    }
}

INSTANTIATE_TEST_SUITE_P(
    , FailingDisk, testing::ValuesIn(disastersOfLibraries()), [](const auto &row) { return row.param.name; });

/// VORN_LIMIT_STEP says how closely the places lie together at which the disk ends, in bytes.
TEST(DiskThatEnds, AnywhereInAWriteDoesAllOfItOrNothing)
{
    const int given = qEnvironmentVariableIntValue("VORN_LIMIT_STEP");
    const rlim_t step = given > 0 ? rlim_t(given) : 23'456;
    Workplace place;
    for (const Operation &deed : deeds) {
        SCOPED_TRACE(deed.name);
        OperationOnFailingDisk attempt(deed, place);
        const rlim_t enough = rlim_t(QFileInfo(place.libraryFile()).size()) + 200'000;
        int failures = 0;
        int successes = 0;
        for (rlim_t limit = 0; limit < enough && successes < 2 && !HasFailure(); limit += step) {
            SCOPED_TRACE(limit);
            const bool isDone = attempt.happens([&] { return std::make_shared<FileSizeLimit>(limit); });
            ++(isDone ? successes : failures);
        }
        EXPECT_GT(failures, 0);
        EXPECT_GT(successes, 0);
    }
}

TEST(DiskThatFillsUp, AnywhereInAWriteDoesAllOfItOrNothing)
{
    Workplace place;
    if (!place.putOnSmallDisk(place.library(), 2'000))
        GTEST_SKIP() << "only root may have a disk of her own";
    constexpr qint64 page = 4'096; // the disk's, bytes
    for (const Operation &deed : deeds) {
        SCOPED_TRACE(deed.name);
        OperationOnFailingDisk attempt(deed, place);
        int failures = 0;
        int successes = 0;
        for (qint64 free = 0; free < 100 * page && successes < 2 && !HasFailure(); free += page) {
            SCOPED_TRACE(free);
            const bool isDone = attempt.happens([&] { return std::make_shared<FullDisk>(place.smallDisk(), free); });
            ++(isDone ? successes : failures);
        }
        EXPECT_GT(failures, 0);
        EXPECT_GT(successes, 0);
    }
}

namespace {

struct FirstThing {
    const char *name;
    void (*put)(TestLibrary &library, const Workplace &place);
};

class UnstoredProject : public testing::TestWithParam<FirstThing> { };

} // namespace

TEST_P(UnstoredProject, IsStoredWithTheFirstThingThatIsPutIntoIt)
{
    Workplace place;
    place.restoreLibrary();
    {
        TestLibrary library({}, AppDatabase::openQueue(place.libraryFile()));
        {
            const FileSizeLimit disk(0);
            library.store.createProject(u"Interviews"_s);
        }
        ASSERT_EQ(library.store.projects()->size(), 1);
        GetParam().put(library, place);
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

INSTANTIATE_TEST_SUITE_P(, UnstoredProject,
    testing::Values(
        FirstThing{"Paste",
            [](TestLibrary &library, const Workplace &) { library.store.addPastedDocument(u"A"_s, u"text"_s); }},
        FirstThing{"Code", [](TestLibrary &library, const Workplace &) { library.store.createCode(u"One"_s); }},
        FirstThing{"File",
            [](TestLibrary &library, const Workplace &place) {
                library.store.importURLs({QUrl::fromLocalFile(place.material(u"one.txt"_s))});
            }},
        FirstThing{"Archive",
            [](TestLibrary &library, const Workplace &place) {
                library.store.importQdpx(place.material(u"study.qdpx"_s));
            }}),
    [](const auto &row) { return row.param.name; });

namespace {

/// What the store has and the file hasn't.
class Unstored : public testing::Test {
protected:
    [[nodiscard]] std::unique_ptr<DatabaseQueue> restored()
    {
        place.restoreLibrary();
        return AppDatabase::openQueue(place.libraryFile());
    }

    Workplace place;
    TestLibrary library{{}, restored()};
    LibraryStore &store = library.store;
};

} // namespace

TEST_F(Unstored, CodeTakesNoPassages)
{
    const Code unstored = [&] {
        const FileSizeLimit disk(0);
        return library.store.createCode(u"New"_s).value();
    }();
    library.store.assignCode(unstored, library.document(u"First"_s), {0, 4});
    EXPECT_EQ(faultsOf(*library.queue), QString());
    EXPECT_FALSE(library.store.codeCounts()->contains(unstored.id));
}

TEST_F(Unstored, DocumentTakesNoPassages)
{
    const Document gone = library.document(u"First"_s);
    DatabaseQueue(place.libraryFile()).write([&](Database &database) { Document::deleteOne(database, gone.id); });
    library.queue->write(
        [&](Database &database) { Coding::filter(Column("documentID") == gone.id).deleteAll(database); });
    library.store.assignCode(library.code(u"Gamma"_s), gone, {0, 4});
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
