#include "exchange/ExcerptExporter.h"
#include "library/survival/Workplace.h"
#include "platform/AtomicFile.h"
#include "platform/LocalizedError.h"
#include "support/FailingDisk.h"

#include <QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using Kind = FailingDisk::Kind;

namespace {

struct Export {
    const char *name;
    void (*write)(TestLibrary &library, const QString &path);
    bool keepsOldFile = true; ///< an archive that can't be written takes the old one with it
};

template <ExportFormat format>
void writeReport(TestLibrary &library, const QString &path)
{
    try {
        library.store.writeExport(library.store.exportGroups({}), format, path);
    } catch (const LocalizedError &error) {
        library.store.lastError().set(u"Export failed: "_s + error.description());
    }
}

const Export exportKinds[] = {
    {"markdown", writeReport<ExportFormat::markdown>},
    {"csv", writeReport<ExportFormat::csv>},
    {"html", writeReport<ExportFormat::html>},
    {"codebook",
        [](TestLibrary &library, const QString &path) {
            library.fileDialogs.pathToSave = path;
            library.store.presentExportQdcPanel();
        }},
    {"archive",
        [](TestLibrary &library, const QString &path) {
            library.fileDialogs.pathToSave = path;
            library.store.presentExportQdpxPanel();
        },
        false},
};
const Export &archive = exportKinds[4];

class FailingExport : public testing::Test {
protected:
    /// Exports over an old file on the failing disk, and again when it is well.
    void expectAllOrNothing(const Export &kind, const QString &name, Kind disaster, qint64 room = 0)
    {
        SCOPED_TRACE(kind.name);
        const QString path = place.exports() + u'/' + name;
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
        QFile::remove(path);
        kind.write(library, path);
        EXPECT_EQ(library.store.lastError().get(), std::nullopt);
        EXPECT_GT(QFileInfo(path).size(), 200);
        EXPECT_EQ(
            QDir(place.exports()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList{name});
        QFile::remove(path);
    }
    /// The beginning of what is told when an archive finds no place for its temporary files.
    [[nodiscard]] std::string complaintWithoutTemporaryFiles(const std::function<void()> &exchange)
    {
        {
            const FailingDisk disk(Kind::closed, place.temporary());
            exchange();
        }
        const QString complaint = library.store.lastError()->value_or(QString());
        library.store.lastError().set({});
        return complaint.section(u':', 0, 0).toStdString();
    }

    Workplace place;
    TestLibrary library{{}, place.restored()};
};

} // namespace

TEST_F(FailingExport, LeavesNoHalfFileAndSaysWhy)
{
    for (const Export &kind : exportKinds) {
        expectAllOrNothing(kind, u"out.x"_s, Kind::full);
        expectAllOrNothing(kind, u"out.x"_s, Kind::full, 150);
        expectAllOrNothing(kind, u"out.x"_s, Kind::closed);
        expectAllOrNothing(kind, u"out.x"_s, Kind::gone);
    }
    expectAllOrNothing(archive, u"out"_s, Kind::closed); // a name to which the archiver adds its own ending
}

TEST_F(FailingExport, OfAnArchiveNeedsAPlaceForTemporaryFilesAndSoDoesItsImport)
{
    const QString path = place.exports() + u"/out.qdpx"_s;
    EXPECT_EQ(complaintWithoutTemporaryFiles([&] { archive.write(library, path); }), "Export failed");
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_EQ(complaintWithoutTemporaryFiles([&] { library.store.importQdpx(place.material(u"study.qdpx"_s)); }),
        "Import failed");
    EXPECT_EQ(library.store.documents()->size(), 2);
    library.store.importQdpx(place.material(u"study.qdpx"_s));
    EXPECT_EQ(library.store.documents()->size(), 4);
    EXPECT_EQ(place.leftovers(), QStringList());
}

TEST_F(FailingExport, ThatSucceedsIsAsOpenToOthersAsAnyNewFile)
{
    QFile plain(place.exports() + u"/plain"_s);
    ASSERT_TRUE(plain.open(QIODevice::WriteOnly));
    for (const Export &kind : exportKinds) {
        const QString path = place.exports() + u'/' + QLatin1StringView(kind.name);
        kind.write(library, path);
        EXPECT_EQ(QFile::permissions(path).toInt(), plain.permissions().toInt()) << kind.name;
    }
}
