#include "support/FailingDisk.h"
#include "exchange/ExcerptExporter.h"
#include "library/survival/Workplace.h"
#include "platform/AtomicFile.h"
#include "support/Complaint.h"

#include <QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

using namespace Qt::StringLiterals;
using Kind = FailingDisk::Kind;

namespace {

class LibraryAtRisk : public testing::Test {
protected:
    void SetUp() override
    {
        if (::geteuid() == 0 && !isReachableForAll(place.library()))
            GTEST_SKIP() << "another user can't reach the temporary folder, and root may write every folder";
    }

    Workplace place;
};

class Library : public LibraryAtRisk, public testing::WithParamInterface<Kind> {
protected:
    void SetUp() override
    {
        if (GetParam() == Kind::closed)
            LibraryAtRisk::SetUp();
    }
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

namespace {

struct Export {
    const char *name;
    std::function<void(TestLibrary &library, const QString &path)> write;
    bool keepsOldFile = true; ///< an archive that can't be written takes the old one with it
};

Export report(const char *name, ExportFormat format)
{
    return {name, [format](TestLibrary &library, const QString &path) {
                const QString complaint = complaintAbout([&] { library.store.exportReport({}, format, path); });
                if (!complaint.isEmpty())
                    library.store.lastError().set(u"Export failed: "_s + complaint);
            }};
}

Export exchange(const char *name, void (LibraryStore::*present)(), bool keepsOldFile)
{
    return {name,
        [present](TestLibrary &library, const QString &path) {
            library.fileDialogs.pathToSave = path;
            (library.store.*present)();
        },
        keepsOldFile};
}

} // namespace

TEST_F(LibraryAtRisk, ExportsAWholeFileOrNoneAndSaysWhy)
{
    TestLibrary library({}, place.restored());
    QFile plain(place.material(u"plain"_s));
    ASSERT_TRUE(plain.open(QIODevice::WriteOnly));
    for (const Export &kind : {report("markdown", ExportFormat::markdown), report("csv", ExportFormat::csv),
             report("html", ExportFormat::html), exchange("codebook", &LibraryStore::presentExportQdcPanel, true),
             exchange("archive", &LibraryStore::presentExportQdpxPanel, false)}) {
        const QString path = place.exports() + u"/out.x"_s;
        for (const auto &[disaster, room] : {std::pair(Kind::full, 0), {Kind::full, 150}, {Kind::closed, 0}}) {
            SCOPED_TRACE(testing::Message() << kind.name << int(disaster) << room);
            AtomicFile::write(path, "old");
            {
                const FailingDisk disk(disaster, place.exports(), room);
                kind.write(library, path);
            }
            const std::string complaint = library.store.lastError()->value_or(QString()).toStdString();
            EXPECT_THAT(complaint, testing::StartsWith("Export failed: "));
            EXPECT_THAT(complaint, testing::Not(testing::HasSubstr("Unknown error")));
            if (kind.keepsOldFile || QFile::exists(path)) {
                EXPECT_EQ(AtomicFile::readFile(path), "old");
            }
            EXPECT_EQ(place.leftovers(), QStringList());
            library.store.lastError().set({});
        }
        QFile::remove(path);
        kind.write(library, path);
        EXPECT_EQ(library.store.lastError().get(), std::nullopt);
        EXPECT_GT(QFileInfo(path).size(), 200);
        EXPECT_EQ(QFile::permissions(path).toInt(), plain.permissions().toInt()) << kind.name;
        EXPECT_EQ(QDir(place.exports()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList{u"out.x"_s});
    }
}

TEST_F(LibraryAtRisk, ExchangesNoArchivesWithoutAPlaceForTemporaryFiles)
{
    TestLibrary library({}, place.restored());
    library.fileDialogs.pathToSave = place.exports() + u"/out.qdpx"_s;
    {
        const FailingDisk disk(Kind::closed, place.temporary());
        library.store.presentExportQdpxPanel();
        EXPECT_TRUE(library.store.lastError()->value_or(QString()).startsWith(u"Export failed: "_s));
        library.store.importQdpx(place.material(u"study.qdpx"_s));
        EXPECT_TRUE(library.store.lastError()->value_or(QString()).startsWith(u"Import failed: "_s));
    }
    EXPECT_FALSE(QFile::exists(*library.fileDialogs.pathToSave));
    EXPECT_EQ(library.store.documents()->size(), 2);
}
