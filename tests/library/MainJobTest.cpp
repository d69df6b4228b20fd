#include "platform/AtomicFile.h"
#include "support/TestLibrary.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Every coded passage of the current project as "document | code | text", sorted.
QStringList passages(const LibraryStore &store)
{
    QStringList result;
    for (const Code &code : store.codes().get()) {
        for (const Document &document : store.documents().get()) {
            for (const Coding &coding : store.codings(document)) {
                if (coding.codeID == code.id)
                    result.append(document.title + u" | "_s + code.name + u" | "_s
                        + document.text.mid(coding.start, coding.length));
            }
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
    const QString crlf = u"Zoë wrote:\r\n“信任” 😀\r\n\r\nnaïve café"_s;
    for (const QString &name : fixtures.entryList(QDir::Files))
        ASSERT_TRUE(QFile::copy(fixtures.filePath(name), folder.filePath(name)));
    AtomicFile::write(
        folder.filePath(u"notes.md"_s), "# Notes\n\nTrust grows slowly — 信任。 👩‍🔬 asked.\n");

    TestLibrary library;
    LibraryStore &store = library.store;
    store.importURLs({QUrl::fromLocalFile(folder.path())});
    QStringList kinds;
    for (const Document &document : store.documents().get())
        kinds.append(document.title + u'.' + document.sourceKind);
    kinds.sort();
    EXPECT_EQ(kinds,
        (QStringList{u"blank-pages.pdf"_s, u"gb18030.txt"_s, u"interview.docx"_s, u"interview.pdf"_s,
            u"interview.rtf"_s, u"latin-1.txt"_s, u"notes.md"_s, u"two-columns.pdf"_s, u"utf-16be-mark.txt"_s,
            u"utf-16le-mark.txt"_s, u"utf-8-mark.txt"_s, u"utf-8.txt"_s}));
    for (const auto &title : {u"gb18030"_s, u"utf-8"_s, u"utf-8-mark"_s, u"utf-16be-mark"_s, u"utf-16le-mark"_s})
        EXPECT_EQ(library.document(title).text.left(crlf.size()), crlf) << title.toStdString();

    library.makeCodes({u"Trust"_s, u"Doubt"_s, u"Voice"_s, u"Draft"_s, u"Gone"_s});
    for (const auto &title : {u"gb18030"_s, u"utf-8"_s, u"utf-16le-mark"_s}) {
        code(library, title, u"“信任” 😀"_s, u"Trust"_s);
        code(library, title, u"wrote:\r\n“信"_s, u"Voice"_s);
        code(library, title, u"😀\r\n\r\nnaïve"_s, u"Draft"_s);
    }
    code(library, u"notes"_s, u"Trust grows slowly — 信任"_s, u"Trust"_s);
    code(library, u"notes"_s, u"信任。 👩‍🔬"_s, u"Doubt"_s);
    code(library, u"notes"_s, u"asked"_s, u"Gone"_s);
    for (const auto &title : {u"blank-pages"_s, u"two-columns"_s}) {
        const Document document = library.document(title);
        store.assignCode(library.code(u"Doubt"_s), document, {3, 12});
    }

    store.nestCode(library.code(u"Doubt"_s).id, library.code(u"Trust"_s).id);
    store.nestCode(library.code(u"Draft"_s).id, library.code(u"Doubt"_s).id);
    store.setCodeMemo(library.code(u"Trust"_s), u"What holds\na group together & <why>"_s);
    store.mergeCodes(library.code(u"Draft"_s), library.code(u"Voice"_s));
    store.deleteCode(library.code(u"Gone"_s));
    const QStringList before = passages(store);
    ASSERT_EQ(before.size(), 13);

    const QUuid trust = library.code(u"Trust"_s).id;
    store.runQuery({.codeIDs = {trust, library.code(u"Doubt"_s).id}, .mode = QuerySpec::Mode::all, .textFilter = {}});
    ASSERT_EQ(store.queryResults()->size(), 1);
    EXPECT_EQ(store.queryResults()->first().snippet.toString(), u"信任"_s);
    store.runQuery({.codeIDs = {trust}, .mode = QuerySpec::Mode::any, .textFilter = u" TRUST "_s});
    EXPECT_EQ(store.queryResults()->size(), 1);
    store.runWordFrequency(WordFrequency::InCode{trust}, 3, true, 50);
    EXPECT_EQ(store.wordFreqItems()->first(), (WordFrequency::Item{u"信任"_s, 4}));

    for (const ExportFormat format : ExportFormats::formats()) {
        const QString path = folder.filePath(u"report."_s + ExportFormats::fileExtension(format));
        store.writeExport(store.exportGroups({}), format, path);
        EXPECT_TRUE(AtomicFile::readFile(path).contains("信任。 👩‍🔬")) << path.toStdString();
    }

    const QList<Document> documents = store.documents().get();
    const QString archive = folder.filePath(u"study.qdpx"_s);
    store.exportQdpx(archive);
    store.createProject(u"A colleague's"_s);
    store.importQdpx(archive);
    EXPECT_EQ(store.statusMessage().get(), u"Imported 3 codes · 12 documents · 13 excerpts"_s);
    EXPECT_EQ(passages(store), before);
    for (const Document &document : documents) {
        const auto same = [&](const Document &each) {
            return each.title == document.title && each.text == document.text;
        };
        EXPECT_TRUE(std::ranges::any_of(store.documents().get(), same)) << document.title.toStdString();
    }
    EXPECT_EQ(library.code(u"Trust"_s).memo, u"What holds\na group together & <why>"_s);
    EXPECT_EQ(library.code(u"Doubt"_s).parentID, library.code(u"Trust"_s).id);
}
