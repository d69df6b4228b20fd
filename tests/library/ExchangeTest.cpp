#include "platform/AtomicFile.h"
#include "platform/LocalizedError.h"
#include "records/AppDatabase.h"
#include "support/TestLibrary.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// A library with one coded passage.
struct CodedLibrary : TestLibrary {
    CodedLibrary()
    {
        const Code code = makeCodes({u"One"_s, u"Child"_s}).first();
        store.nestCode(this->code(u"Child"_s).id, code.id);
        store.assignCode(code, paste(u"A"_s, u"some \U0001F600 text\r\nhere"_s), {5, 7});
    }
};

QStringList stagingFolders()
{
    return QDir(QDir::tempPath()).entryList({u"vorn-qdpx-*"_s}, QDir::Dirs);
}

} // namespace

TEST(Reports, ReplaceAFileOrLeaveItAsItWas)
{
    CodedLibrary library;
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"report"_s);
    EXPECT_EQ(library.store.exportGroups(library.code(u"One"_s).id).size(), 1);
    EXPECT_EQ(library.store.exportGroups(QUuid::createUuid()).size(), 2);
    AtomicFile::write(path, "old");
    EXPECT_THROW(library.store.writeExport({}, ExportFormat::csv, folder.filePath(u"no/report"_s)), LocalizedError);
    library.store.writeExport(library.store.exportGroups({}), ExportFormat::csv, path);
    EXPECT_EQ(AtomicFile::readFile(path),
        "\xEF\xBB\xBF"
        "Code,Excerpt,Document,Start,Length\nOne,😀 text,A,5,7\n");
    for (const ExportFormat format : {ExportFormat::markdown, ExportFormat::html}) {
        library.store.writeExport(library.store.exportGroups({}), format, path);
        EXPECT_TRUE(AtomicFile::readFile(path).contains("Untitled Study — Coded Excerpts"));
    }
}

TEST(Exchange, ArchiveComesBackThroughThePanels)
{
    CodedLibrary library;
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"study.qdpx"_s);
    library.store.renameProject(library.store.project()->value(), u"../a/b"_s);
    library.store.presentExportQdpxPanel(); // cancelled
    EXPECT_EQ(library.fileDialogs.saveRequest->proposedName, u"-a-b-REFI-QDA.qdpx"_s);
    EXPECT_EQ(library.fileDialogs.saveRequest->title, u"Export REFI-QDA Project"_s);
    EXPECT_EQ(library.store.statusMessage().get(), std::nullopt);
    library.fileDialogs.pathToSave = path;
    library.store.presentExportQdpxPanel();
    EXPECT_EQ(library.store.statusMessage().get(), u"Exported REFI-QDA project ✓"_s);
    EXPECT_EQ(library.fileViewer.revealed, QStringList{path});

    const QList<Coding> coded = library.store.codings(library.document(u"A"_s));
    library.store.createProject(u"Second"_s);
    const qint64 revision = library.store.codingRevision().get();
    library.fileDialogs.pathsToOpen = {path};
    library.store.presentImportQdpxPanel();
    EXPECT_EQ(library.fileDialogs.openRequest->extension, u"qdpx"_s);
    EXPECT_EQ(library.store.statusMessage().get(), u"Imported 2 codes · 1 documents · 1 excerpts"_s);
    EXPECT_EQ(library.store.codingRevision().get(), revision + 1);
    EXPECT_EQ(library.document(u"A"_s).text, u"some \U0001F600 text\r\nhere"_s);
    EXPECT_EQ(library.store.codings(library.document(u"A"_s)).first().range(), coded.first().range());
    EXPECT_EQ(library.store.orderedCodes().last().depth, 1);
    EXPECT_EQ(library.store.codeCounts()->value(library.code(u"One"_s).id), 1);
}

TEST(Exchange, CodebookGoesOutAlone)
{
    CodedLibrary library;
    const QTemporaryDir folder;
    library.fileDialogs.pathToSave = folder.filePath(u"book.qdc"_s);
    library.store.presentExportQdcPanel();
    EXPECT_EQ(library.fileDialogs.saveRequest->title, u"Export Codebook (REFI-QDA)"_s);
    EXPECT_EQ(library.fileDialogs.saveRequest->proposedName, u"Untitled Study-Codebook.qdc"_s);
    EXPECT_EQ(library.store.statusMessage().get(), u"Exported codebook ✓"_s);
    EXPECT_TRUE(AtomicFile::readFile(*library.fileDialogs.pathToSave).contains("urn:QDA-XML:codebook:1.0"));
}

TEST(Exchange, AnArchiveThatIsStoppedAddsNothing)
{
    CodedLibrary library;
    const QTemporaryDir folder;
    const QStringList staging = stagingFolders();
    const QString path = folder.filePath(u"two.qdpx"_s);
    library.paste(u"second"_s, u"other words"_s);
    library.store.exportQdpx(path);
    library.stopBefore = 2;
    library.store.importQdpx(path);
    EXPECT_TRUE(library.steps.contains(u"1/2 A"_s)) << library.steps.join(u'|').toStdString();
    EXPECT_EQ(library.steps.last(), u"2/2 second"_s);
    EXPECT_EQ(library.store.statusMessage().get(), u"Import stopped: nothing was added"_s);
    EXPECT_EQ(library.store.lastError().get(), std::nullopt);
    library.store.refresh();
    EXPECT_EQ(library.store.documents()->size(), 2);
    EXPECT_EQ(library.storedCodes().size(), 2);
    EXPECT_EQ(stagingFolders(), staging);

    library.stopBefore = 1; // still unpacking
    library.steps.clear();
    library.store.importQdpx(path);
    EXPECT_EQ(library.steps, QStringList{u"1/1 two.qdpx"_s});
    EXPECT_EQ(stagingFolders(), staging);
}

TEST(Exchange, FailuresAreToldAndChangeNothing)
{
    CodedLibrary library;
    const QTemporaryDir folder;
    const QStringList staging = stagingFolders();
    library.fileDialogs.pathToSave = folder.filePath(u"no/study.qdpx"_s);
    library.store.presentExportQdpxPanel();
    EXPECT_EQ(library.store.lastError().get(), u"Export failed: /usr/bin/zip failed with status 15"_s);
    EXPECT_TRUE(library.fileViewer.revealed.isEmpty());

    AtomicFile::write(folder.filePath(u"broken.qdpx"_s), "no archive");
    library.store.importQdpx(folder.filePath(u"broken.qdpx"_s));
    EXPECT_EQ(library.store.lastError().get(), u"Import failed: /usr/bin/unzip failed with status 9"_s);

    library.fileDialogs.pathToSave = folder.filePath(u"good.qdpx"_s);
    library.store.presentExportQdpxPanel();
    library.queue->write([](Database &database) {
        database.execute("UPDATE coding SET createdAt = '2000-01-01 00:00:00.000'"); // others are refused from now on
        database.execute("ALTER TABLE coding ADD COLUMN room INTEGER CONSTRAINT disk_is_full CHECK (substr(createdAt, "
                         "1, 4) = '2000')");
    });
    library.store.statusMessage().set({});
    library.store.importQdpx(*library.fileDialogs.pathToSave);
    EXPECT_TRUE(library.store.lastError()->value_or(QString()).startsWith(
        u"Import failed: CHECK constraint failed: disk_is_full - while "_s));
    EXPECT_EQ(library.store.statusMessage().get(), std::nullopt);
    library.store.refresh();
    EXPECT_EQ(library.store.documents()->size(), 1);
    EXPECT_EQ(library.storedCodes().size(), 2);
    EXPECT_EQ(stagingFolders(), staging);
}

TEST(Exchange, ALibraryThatCannotBeReadWholeIsNotExportedInPart)
{
    for (const char *damage : {"UPDATE code SET createdAt = 'never'", "UPDATE coding SET start = 'nowhere'",
             "UPDATE document SET addedAt = 'never'"}) {
        SCOPED_TRACE(damage);
        CodedLibrary library;
        const QTemporaryDir folder;
        library.queue->write([&](Database &database) { database.execute(damage); });
        library.store.refresh();
        const QString report = folder.filePath(u"report.csv"_s);
        EXPECT_THROW(library.store.exportReport({}, ExportFormat::csv, report), LocalizedError);
        library.fileDialogs.pathToSave = folder.filePath(u"study.qdpx"_s);
        library.store.presentExportQdpxPanel();
        EXPECT_TRUE(library.store.lastError()->value_or(QString()).startsWith(u"Export failed: "_s));
        EXPECT_EQ(library.store.statusMessage().get(), std::nullopt);
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList());
    }
}
