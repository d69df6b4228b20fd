#include "exchange/ExcerptExporter.h"
#include "library/survival/Workplace.h"
#include "platform/AtomicFile.h"
#include "platform/LocalizedError.h"
#include "records/AppDatabase.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

void writeReport(TestLibrary &library, ExportFormat format, const QString &path)
{
    try {
        library.store.writeExport(library.store.exportGroups({}), format, path);
    } catch (const LocalizedError &error) {
        library.store.lastError().set(u"Export failed: "_s + error.description());
    }
}

struct Export {
    const char *name;
    void (*write)(TestLibrary &library, const QString &path);
    bool keepsOldFile; ///< an archive that can't be written takes the old one with it
};

const Export exportKinds[] = {
    {"markdown", [](TestLibrary &library, const QString &path) { writeReport(library, ExportFormat::markdown, path); },
        true},
    {"csv", [](TestLibrary &library, const QString &path) { writeReport(library, ExportFormat::csv, path); }, true},
    {"html", [](TestLibrary &library, const QString &path) { writeReport(library, ExportFormat::html, path); }, true},
    {"codebook",
        [](TestLibrary &library, const QString &path) {
            library.fileDialogs.pathToSave = path;
            library.store.presentExportQdcPanel();
        },
        true},
    {"archive",
        [](TestLibrary &library, const QString &path) {
            library.fileDialogs.pathToSave = path;
            library.store.presentExportQdpxPanel();
        },
        false},
};

class Desk {
public:
    explicit Desk(Workplace &place) : m_place(place)
    {
        place.restoreLibrary();
        m_library.emplace(QStringList{}, AppDatabase::openQueue(place.libraryFile()));
    }

    /// Exports over an old file during the disaster and again after it; returns whether the first went well.
    template <typename Strike>
    bool exports(const Export &kind, const QString &name, Strike strike)
    {
        const QString path = m_place.exports() + u'/' + name;
        AtomicFile::write(path, "old");
        m_library->store.lastError().set({});
        {
            const auto disaster = strike();
            kind.write(*m_library, path);
        }
        const bool failed = m_library->store.lastError()->has_value();
        if (failed)
            expectUntouched(kind, path);
        EXPECT_EQ(m_place.leftovers(), QStringList());

        m_library->store.lastError().set({});
        QFile::remove(path);
        kind.write(*m_library, path);
        EXPECT_EQ(m_library->store.lastError().get(), std::nullopt);
        EXPECT_GT(QFileInfo(path).size(), 200);
        EXPECT_EQ(names(), QStringList{name}); // and nothing half beside it
        QFile::remove(path);
        return !failed;
    }

    [[nodiscard]] TestLibrary &library() { return *m_library; }

private:
    void expectUntouched(const Export &kind, const QString &path)
    {
        const QString complaint = m_library->store.lastError()->value();
        EXPECT_THAT(complaint.toStdString(), testing::StartsWith("Export failed: "));
        EXPECT_THAT(complaint.toStdString(), testing::Not(testing::HasSubstr("Unknown error")));
        if (qEnvironmentVariableIsSet("VORN_SHOW"))
            std::printf("    %s\n", qPrintable(complaint));
        if (kind.keepsOldFile || QFile::exists(path)) {
            EXPECT_EQ(AtomicFile::readFile(path), "old");
        }
    }
    [[nodiscard]] QStringList names() const
    {
        QStringList result = QDir(m_place.exports()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        result.removeAll(u"filler"_s);
        return result;
    }

    Workplace &m_place;
    std::optional<TestLibrary> m_library;
};

class FailingExport : public testing::TestWithParam<Disaster> { };

} // namespace

TEST_P(FailingExport, LeavesNoHalfFileAndSaysWhy)
{
    Workplace place;
    if (GetParam().needsSmallDisk && !place.putOnSmallDisk(place.exports(), 500))
        GTEST_SKIP() << "only root may have a disk of her own";
    Desk desk(place);
    for (const Export &kind : exportKinds) {
        SCOPED_TRACE(kind.name);
        EXPECT_FALSE(desk.exports(kind, u"out.x"_s, [&] { return GetParam().strike(place, place.exports()); }));
    }
    SCOPED_TRACE("archive under a name without a dot");
    EXPECT_FALSE(desk.exports(exportKinds[4], u"out"_s, [&] { return GetParam().strike(place, place.exports()); }));
}

INSTANTIATE_TEST_SUITE_P(
    , FailingExport, testing::ValuesIn(disasters()), [](const auto &row) { return row.param.name; });

TEST(Exports, AreAllAsOpenToOthersAsAnyNewFile)
{
    Workplace place;
    Desk desk(place);
    const QString plain = place.exports() + u"/plain"_s;
    QFile file(plain);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    for (const Export &kind : exportKinds) {
        SCOPED_TRACE(kind.name);
        const QString path = place.exports() + u"/out.x"_s;
        kind.write(desk.library(), path);
        EXPECT_EQ(QFile::permissions(path).toInt(), QFile::permissions(plain).toInt());
        QFile::remove(path);
    }
}

TEST(ExportToADiskThatEnds, IsWholeOrIsntThere)
{
    Workplace place;
    Desk desk(place);
    for (const Export &kind : exportKinds) {
        SCOPED_TRACE(kind.name);
        int failures = 0;
        int successes = 0;
        for (rlim_t limit = 0; limit < 60'000 && successes == 0; limit = limit * 2 + 7) {
            SCOPED_TRACE(limit);
            const bool isDone = desk.exports(kind, u"out.x"_s, [&] { return std::make_shared<FileSizeLimit>(limit); });
            ++(isDone ? successes : failures);
        }
        EXPECT_GT(failures, 0);
        EXPECT_GT(successes, 0);
    }
}

TEST(Archives, AreRefusedWithoutAPlaceForTemporaryFiles)
{
    for (const Disaster &disaster : disasters()) {
        SCOPED_TRACE(disaster.name);
        if (QLatin1StringView(disaster.name) == u"TheFolderIsGone") // it is made again
            continue;
        Workplace place;
        if (disaster.needsSmallDisk && !place.putOnSmallDisk(place.temporary(), 500))
            continue;
        place.restoreLibrary();
        TestLibrary library({}, AppDatabase::openQueue(place.libraryFile()));
        const QString path = place.exports() + u"/out.qdpx"_s;
        {
            const auto blow = disaster.strike(place, place.temporary());
            exportKinds[4].write(library, path);
        }
        EXPECT_THAT(library.store.lastError()->value_or(QString()).toStdString(), testing::StartsWith("Export failed"));
        EXPECT_FALSE(QFile::exists(path));
        library.store.lastError().set({});
        {
            const auto blow = disaster.strike(place, place.temporary());
            library.store.importQdpx(place.material(u"study.qdpx"_s));
        }
        EXPECT_THAT(library.store.lastError()->value_or(QString()).toStdString(), testing::StartsWith("Import failed"));
        EXPECT_EQ(library.store.documents()->size(), 2);
        library.store.lastError().set({});
        library.store.importQdpx(place.material(u"study.qdpx"_s));
        EXPECT_EQ(library.store.lastError().get(), std::nullopt);
        EXPECT_EQ(library.store.documents()->size(), 4);
        EXPECT_EQ(place.leftovers(), QStringList());
    }
}
