#include "platform/AtomicFile.h"
#include "platform/LocalizedError.h"
#include "records/AppDatabase.h"
#include "support/TestLibrary.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// A library with one coded passage, and a folder.
class Exchange : public testing::Test {
protected:
    Exchange()
    {
        library.makeCodes({u"One"_s, u"Child"_s});
        store.nestCode(library.code(u"Child"_s).id, library.code(u"One"_s).id);
        store.assignCode(library.code(u"One"_s), library.paste(u"A"_s, u"some \U0001F600 text\r\nhere"_s), {5, 7});
        store.setCodeMemo(library.code(u"One"_s), u"What holds\na group together & <why>"_s);
    }
    [[nodiscard]] QString path(const QString &name) const { return folder.filePath(name); }
    [[nodiscard]] QStringList titles() const
    {
        QStringList result;
        for (const Document &document : store.documents().get())
            result.append(document.title + u'|' + document.sourceKind);
        result.sort();
        return result;
    }

    QTemporaryDir folder;
    TestLibrary library;
    LibraryStore &store = library.store;
};

} // namespace

TEST_F(Exchange, ArchivesAndCodebooksGoThroughTheFileDialogs)
{
    store.renameProject(store.project()->value(), u"../a/b"_s);
    store.presentExportQdpxPanel(); // cancelled
    EXPECT_EQ(library.fileDialogs.saveRequest->proposedName, u"-a-b-REFI-QDA.qdpx"_s);
    EXPECT_EQ(library.fileDialogs.saveRequest->title, u"Export REFI-QDA Project"_s);
    EXPECT_EQ(store.statusMessage().get(), std::nullopt);
    library.fileDialogs.pathToSave = path(u"study.qdpx"_s);
    store.presentExportQdpxPanel();
    EXPECT_EQ(store.statusMessage().get(), u"Exported REFI-QDA project ✓"_s);
    EXPECT_EQ(library.fileViewer.revealed, QStringList{path(u"study.qdpx"_s)});
    store.renameProject(store.project()->value(), QString(79, u'x') + u"\U0001F600"_s);
    library.fileDialogs.pathToSave = path(u"book.qdc"_s);
    store.presentExportQdcPanel();
    EXPECT_EQ(library.fileDialogs.saveRequest->title, u"Export Codebook (REFI-QDA)"_s);
    EXPECT_EQ(library.fileDialogs.saveRequest->proposedName, QString(79, u'x') + u"-Codebook.qdc"_s);
    EXPECT_EQ(store.statusMessage().get(), u"Exported codebook ✓"_s);
    EXPECT_TRUE(AtomicFile::readFile(path(u"book.qdc"_s)).contains("What holds"));

    store.createProject(u"Second"_s);
    const qint64 revision = store.codingRevision().get();
    library.fileDialogs.pathsToOpen = {path(u"study.qdpx"_s)};
    store.presentImportQdpxPanel();
    EXPECT_EQ(library.fileDialogs.openRequest->extension, u"qdpx"_s);
    EXPECT_EQ(store.statusMessage().get(), u"Imported 2 codes · 1 documents · 1 excerpts"_s);
    EXPECT_EQ(store.codingRevision().get(), revision + 1);
    EXPECT_EQ(library.document(u"A"_s).text, u"some \U0001F600 text\r\nhere"_s);
    EXPECT_EQ(store.codings(library.document(u"A"_s)).first().range(), (TextRange{5, 7}));
    EXPECT_EQ(store.orderedCodes().last().depth, 1);
    EXPECT_EQ(library.code(u"One"_s).memo, u"What holds\na group together & <why>"_s);

    const QString report = path(u"report"_s);
    store.exportReport(library.code(u"One"_s).id, ExportFormat::csv, report);
    EXPECT_EQ(AtomicFile::readFile(report),
        "\xEF\xBB\xBF"
        "Code,Excerpt,Document,Start,Length\nOne,😀 text,A,5,7\n");
    for (const ExportFormat format : {ExportFormat::markdown, ExportFormat::html}) {
        store.exportReport({}, format, report);
        EXPECT_TRUE(AtomicFile::readFile(report).contains("Second — Coded Excerpts"));
    }
}

TEST_F(Exchange, AnArchiveThatIsStoppedAddsNothing)
{
    library.paste(u"second"_s, u"other words"_s);
    store.exportQdpx(path(u"two.qdpx"_s));
    library.stopBefore = 2;
    store.importQdpx(path(u"two.qdpx"_s));
    EXPECT_TRUE(library.steps.contains(u"1/2 A"_s)) << library.steps.join(u'|').toStdString();
    EXPECT_EQ(library.steps.last(), u"2/2 second"_s);
    EXPECT_EQ(store.statusMessage().get(), u"Import stopped: nothing was added"_s);
    EXPECT_EQ(store.lastError().get(), std::nullopt);
    store.refresh();
    EXPECT_EQ(store.documents()->size(), 2);
    EXPECT_EQ(library.storedCodes().size(), 2);
}

TEST_F(Exchange, ALibraryThatCannotBeReadWholeIsNotExportedInPart)
{
    library.fileDialogs.pathToSave = path(u"study.qdpx"_s);
    for (const char *damage : {"UPDATE coding SET start = 'nowhere'", "UPDATE code SET createdAt = 'never'",
             "UPDATE document SET addedAt = 'never'"}) {
        SCOPED_TRACE(damage);
        library.queue->write([&](Database &database) { database.execute(damage); });
        EXPECT_THROW(store.exportReport({}, ExportFormat::csv, path(u"report.csv"_s)), LocalizedError);
        store.presentExportQdpxPanel();
        EXPECT_TRUE(store.lastError()->value_or(QString()).startsWith(u"Export failed: "_s));
        EXPECT_EQ(store.statusMessage().get(), std::nullopt);
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList());
    }
}

TEST_F(Exchange, AnImportTakesTheSupportedFilesAndSaysOnlyWhatTheUserMustKnow)
{
    for (const QString &name : {u"a.txt"_s, u"notes.TXT"_s, u"report.final.md"_s, u"story.markdown"_s, u".hidden.txt"_s,
             u".txt"_s, u"b.jpg"_s, u"a #1 %41?.txt"_s, u"broken.docx"_s, u"broken.rtf"_s})
        AtomicFile::write(path(name), "text");
    AtomicFile::write(path(u"blank.txt"_s), " \r\n\t ");
    QDir(folder.path()).mkpath(u"c.txt/empty"_s);
    AtomicFile::write(path(u"c.txt/inner.txt"_s), "not entered");
    const QString nothing = u"No supported files found (supported: txt · md · docx · rtf · pdf)."_s;
    const std::pair<QStringList, std::optional<QString>> rows[]{
        {{}, {}},
        {{u"gone.txt"_s, u"c.txt/empty"_s, u"blank.txt"_s}, {}},
        {{u"b.jpg"_s, u"broken.docx"_s}, nothing},
        {{u"broken.docx"_s}, u"broken.docx: Couldn't read broken.docx."_s},
        {{u"broken.docx"_s, u"a.txt"_s, u"broken.rtf"_s}, u"broken.rtf: Couldn't read broken.rtf."_s},
    };
    for (const auto &[names, message] : rows) {
        QList<QUrl> urls;
        for (const QString &name : names)
            urls.append(QUrl::fromLocalFile(path(name)));
        store.lastError().set({});
        store.importURLs(urls);
        EXPECT_EQ(store.lastError().get(), message) << names.join(u' ').toStdString();
        EXPECT_FALSE(store.isImporting().get());
    }
    EXPECT_EQ(titles(), (QStringList{u"A|paste"_s, u"a|txt"_s}));
    EXPECT_EQ(store.selectedDocumentID().get(), library.document(u"a"_s).id);

    const ChangeCounter importing(store.isImporting());
    library.fileDialogs.pathsToOpen = {folder.path()};
    store.presentImportPanel();
    EXPECT_EQ(library.fileDialogs.openRequest->title, u"Import Documents"_s);
    EXPECT_TRUE(library.fileDialogs.openRequest->allowsFolders && library.fileDialogs.openRequest->allowsSeveral);
    EXPECT_EQ(importing.count(), 0) << "the dialog hasn't closed yet";
    QCoreApplication::processEvents();
    EXPECT_EQ(importing.count(), 2);
    EXPECT_EQ(titles(),
        (QStringList{u".hidden|txt"_s, u"A|paste"_s, u"a #1 %41?|txt"_s, u"a|txt"_s, u"a|txt"_s, u"notes|txt"_s,
            u"report.final|md"_s, u"story|markdown"_s}));
}

TEST_F(Exchange, AnImportThatIsStoppedKeepsWhatWasWritten)
{
    QList<QUrl> urls;
    for (const QString &name : {u"one.txt"_s, u"two.txt"_s, u"three.txt"_s}) {
        AtomicFile::write(path(name), "text");
        urls.append(QUrl::fromLocalFile(path(name)));
    }
    library.stopBefore = 3;
    store.importURLs(urls);
    EXPECT_EQ(titles(), (QStringList{u"A|paste"_s, u"one|txt"_s, u"two|txt"_s}));
    EXPECT_EQ(library.steps, (QStringList{u"1/3 one.txt"_s, u"2/3 two.txt"_s, u"3/3 three.txt"_s}));
    EXPECT_FALSE(store.isImporting().get());
}
