#include "support/FailingDisk.h"
#include "library/survival/Workplace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

using namespace Qt::StringLiterals;
using Kind = FailingDisk::Kind;

namespace {

class Library : public testing::TestWithParam<Kind> {
protected:
    void SetUp() override
    {
        if (GetParam() == Kind::closed && ::geteuid() == 0 && !isReachableForAll(place.library()))
            GTEST_SKIP() << "another user can't reach the temporary folder, and root may write every folder";
    }

    Workplace place;
};

} // namespace

TEST_P(Library, StaysAsItWasOnAFailingDiskAndTheProgramAtWork)
{
    for (const Operation &operation : operations()) {
        SCOPED_TRACE(operation.name);
        QString expected;
        {
            TestLibrary undisturbed({}, place.restored());
            operation.perform(undisturbed, place);
            expected = digestOf(*undisturbed.queue);
        }
        TestLibrary library({}, place.restored());
        const QString before = digestOf(*library.queue);
        EXPECT_NE(before, expected);
        {
            const FailingDisk disk(GetParam(), place.library());
            operation.perform(library, place);
        }
        EXPECT_EQ(digestOf(*library.queue), before);
        EXPECT_EQ(faultsOf(*library.queue), QString());
        EXPECT_EQ(place.leftovers(), QStringList());
        const QString complaint = library.store.lastError()->value_or(QString());
        // When not even the list can be read afterwards, that is what is told in the end.
        if (operation.complaint && !complaint.contains(u"PRAGMA data_version"_s)) {
            EXPECT_THAT(complaint.toStdString(), testing::StartsWith(operation.complaint));
            EXPECT_GT(complaint.size(), qsizetype(qstrlen(operation.complaint)));
        }
        EXPECT_EQ(library.store.statusMessage().get(), std::nullopt);
        library.store.lastError().set({});
        library.store.refresh();
        operation.perform(library, place); // the disk is well again
        EXPECT_EQ(library.store.lastError().get(), std::nullopt);
        EXPECT_EQ(digestOf(*library.queue), expected);
    }
}

TEST_P(Library, StoresAProjectThatCouldNotBeStoredWithWhatIsImportedIntoIt)
{
    for (const Operation &import : operations().first(2)) {
        SCOPED_TRACE(import.name);
        TestLibrary library({}, place.restored());
        {
            const FailingDisk disk(GetParam(), place.library());
            library.store.createProject(u"Interviews"_s);
        }
        library.store.lastError().set({});
        import.perform(library, place);
        EXPECT_EQ(library.store.lastError().get(), std::nullopt);
        EXPECT_EQ(library.store.projects()->size(), 2);
        EXPECT_EQ(faultsOf(*library.queue), QString());
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, Library, testing::Values(Kind::full, Kind::closed, Kind::locked));
