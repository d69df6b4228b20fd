#include "support/TestLibrary.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class ImportFolder {
public:
    void add(const QString &name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            throw std::runtime_error("can't write the test's file");
    }
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] QUrl url(const QString &name = {}) const { return QUrl::fromLocalFile(path(name)); }
    void makeFolder(const QString &name) const { QDir(m_folder.path()).mkdir(name); }

private:
    QTemporaryDir m_folder;
};

QStringList titles(const LibraryStore &store)
{
    QStringList result;
    for (const Document &document : store.documents().get())
        result.append(document.title + u'|' + document.sourceKind);
    result.sort();
    return result;
}

const QString nothingSupported = u"No supported files found (supported: txt · md · docx · rtf · pdf)."_s;

} // namespace

TEST(Import, TakesTheSupportedFilesOfAFolderAndOfNoFolderInIt)
{
    const ImportFolder folder;
    folder.add(u"a.txt"_s, "one");
    folder.add(u"notes.TXT"_s, "two");
    folder.add(u"report.final.md"_s, "three");
    folder.add(u"story.markdown"_s, "four");
    folder.add(u".hidden.txt"_s, "five");
    folder.add(u".txt"_s, "a name, not an ending");
    folder.add(u"b.jpg"_s, "no");
    folder.add(u"blank.txt"_s, " \r\n\t ");
    folder.makeFolder(u"c"_s);
    folder.add(u"c/inner.txt"_s, "not entered");
    TestLibrary library;
    const ChangeCounter importing(library.store.isImporting());
    library.store.importURLs({folder.url()});
    EXPECT_EQ(titles(library.store),
        (QStringList{u".hidden|txt"_s, u"a|txt"_s, u"notes|txt"_s, u"report.final|md"_s, u"story|markdown"_s}));
    EXPECT_EQ(library.store.lastError().get(), std::nullopt);
    EXPECT_EQ(library.store.statusMessage().get(), std::nullopt);
    EXPECT_EQ(library.store.selectedDocumentID().get(), library.store.documents()->first().id);
    EXPECT_EQ(importing.count(), 2);
    EXPECT_FALSE(library.store.isImporting().get());
}

TEST(Import, SaysOnlyWhatTheUserMustKnow)
{
    const ImportFolder folder;
    folder.add(u"picture.jpg"_s, "no");
    folder.add(u"blank.txt"_s, "\n");
    folder.add(u"broken.docx"_s, "no archive");
    folder.add(u"broken.rtf"_s, "no rich text");
    folder.add(u"good.txt"_s, "text");
    folder.makeFolder(u"empty"_s);
    folder.makeFolder(u"folder.md"_s);
    struct Case {
        QStringList names;
        std::optional<QString> message;
    };
    const Case cases[] = {
        {{}, {}},
        {{u"gone.txt"_s, u"empty"_s, u"blank.txt"_s}, {}},
        {{u"picture.jpg"_s, u"broken.docx"_s}, nothingSupported},
        {{u"broken.docx"_s}, u"broken.docx: Couldn't read broken.docx."_s},
        {{u"broken.docx"_s, u"good.txt"_s, u"broken.rtf"_s}, u"broken.rtf: Couldn't read broken.rtf."_s},
    };
    for (const Case &each : cases) {
        TestLibrary library;
        QList<QUrl> urls;
        for (const QString &name : each.names)
            urls.append(folder.url(name));
        library.store.importURLs(urls);
        EXPECT_EQ(library.store.lastError().get(), each.message) << each.names.join(u' ').toStdString();
        EXPECT_EQ(library.store.documents()->size(), each.names.contains(u"good.txt"_s) ? 1 : 0);
        EXPECT_FALSE(library.store.isImporting().get());
    }
}

TEST(Import, ThatIsStoppedKeepsWhatWasWritten)
{
    const ImportFolder folder;
    for (const QString &name : {u"one.txt"_s, u"two.txt"_s, u"three.txt"_s})
        folder.add(name, "text");
    TestLibrary library;
    library.stopBefore = 3;
    library.store.importURLs({folder.url(u"one.txt"_s), folder.url(u"two.txt"_s), folder.url(u"three.txt"_s)});
    EXPECT_EQ(titles(library.store), (QStringList{u"one|txt"_s, u"two|txt"_s}));
    EXPECT_EQ(library.steps, (QStringList{u"1/3 one.txt"_s, u"2/3 two.txt"_s, u"3/3 three.txt"_s}));
    EXPECT_FALSE(library.store.isImporting().get());
}

TEST(Import, ThroughThePanelBeginsWhenThePanelHasClosed)
{
    const ImportFolder folder;
    folder.add(u"a #1 %41?.txt"_s, "text");
    TestLibrary library;
    library.store.presentImportPanel();
    EXPECT_EQ(library.fileDialogs.openRequest->title, u"Import Documents"_s);
    EXPECT_EQ(library.fileDialogs.openRequest->prompt, u"Import"_s);
    EXPECT_TRUE(library.fileDialogs.openRequest->allowsFolders && library.fileDialogs.openRequest->allowsSeveral);

    library.fileDialogs.pathsToOpen = {folder.path(u"a #1 %41?.txt"_s)};
    library.store.presentImportPanel();
    EXPECT_TRUE(library.store.documents()->isEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(titles(library.store), QStringList{u"a #1 %41?|txt"_s});
}
