#include "platform/AtomicFile.h"
#include "support/TestLibrary.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Every coded passage of the current project as "document | code | text", and every document as "title | text",
/// sorted.
QStringList contentsOf(const LibraryStore &store)
{
    QStringList result;
    for (const Document &document : store.documents().get()) {
        result.append(document.title + u" | "_s + document.text);
        for (const Coding &coding : store.codings(document)) {
            const auto code = std::ranges::find(store.codes().get(), coding.codeID, &Code::id);
            result.append(
                document.title + u" | "_s + code->name + u" | "_s + document.text.mid(coding.start, coding.length));
        }
    }
    result.sort();
    return result;
}

void code(TestLibrary &library, const QString &title, const QString &phrase, const QString &codeName)
{
    const Document document = library.document(title);
    const qsizetype start = document.text.indexOf(phrase);
    ASSERT_GE(start, 0) << title.toStdString() << " lacks " << phrase.toStdString();
    library.store.assignCode(library.code(codeName), document, {start, phrase.size()});
}

} // namespace

// What a researcher does, from the files on her disk to the archive in a colleague's project.
TEST(MainJob, KeepsEveryPassageFromTheFilesToTheSecondProject)
{
    const QTemporaryDir folder;
    const QDir fixtures(QStringLiteral(VORN_FIXTURES));
    for (const QString &name : fixtures.entryList({u"*.txt"_s, u"*.docx"_s, u"*.rtf"_s, u"*.pdf"_s}, QDir::Files))
        ASSERT_TRUE(QFile::copy(fixtures.filePath(name), folder.filePath(name)));
    AtomicFile::write(
        folder.filePath(u"notes.md"_s), "# Notes\n\nTrust grows slowly — 信任。 👩‍🔬 asked.\n");
    TestLibrary library;
    LibraryStore &store = library.store;
    store.importURLs({QUrl::fromLocalFile(folder.path())});
    ASSERT_EQ(store.documents()->size(), 12);

    library.makeCodes({u"Trust"_s, u"Doubt"_s, u"Voice"_s, u"Draft"_s, u"Gone"_s});
    for (const auto &title : {u"gb18030"_s, u"utf-8"_s, u"utf-8-mark"_s, u"utf-16be-mark"_s, u"utf-16le-mark"_s}) {
        code(library, title, u"“信任” 😀"_s, u"Trust"_s);
        code(library, title, u"wrote:\r\n“信"_s, u"Voice"_s);
        code(library, title, u"😀\r\n\r\nnaïve"_s, u"Draft"_s);
    }
    code(library, u"notes"_s, u"信任。 👩‍🔬"_s, u"Doubt"_s);
    code(library, u"notes"_s, u"asked"_s, u"Gone"_s);
    store.assignCode(library.code(u"Doubt"_s), library.document(u"two-columns"_s), {3, 12});
    store.nestCode(library.code(u"Doubt"_s).id, library.code(u"Trust"_s).id);
    store.nestCode(library.code(u"Draft"_s).id, library.code(u"Doubt"_s).id);
    store.mergeCodes(library.code(u"Draft"_s), library.code(u"Voice"_s));
    store.deleteCode(library.code(u"Gone"_s));
    const QStringList before = contentsOf(store);
    EXPECT_EQ(before.size(), 12 + 17);

    store.exportQdpx(folder.filePath(u"study.qdpx"_s));
    store.createProject(u"A colleague's"_s);
    store.importQdpx(folder.filePath(u"study.qdpx"_s));
    EXPECT_EQ(store.statusMessage().get(), u"Imported 3 codes · 12 documents · 17 excerpts"_s);
    EXPECT_EQ(contentsOf(store), before);
    EXPECT_EQ(library.code(u"Doubt"_s).parentID, library.code(u"Trust"_s).id);
}
