#include "exchange/DocumentImporter.h"

#include "exchange/ImportStep.h"
#include "platform/ChildProcess.h"
#include "platform/LocalizedError.h"
#include "support/Complaint.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

QString fixture(const QString &name)
{
    return QStringLiteral(VORN_FIXTURES "/") + name;
}

/// The sentence that the import of `path` fails with; empty if it doesn't.
QString complaintOf(const QString &path)
{
    return complaintAbout([&] { (void)DocumentImporter::extract(path); });
}

QString unreadable(const QString &fileName)
{
    return u"Couldn't read "_s + fileName + u"."_s;
}

/// A folder to write files into.
class DocumentImport : public testing::Test {
protected:
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

    QString write(const QString &name, QByteArrayView bytes) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes.data(), bytes.size()) == bytes.size());
        return path(name);
    }

    /// An archive with `part` as its member `member`, under any name at all.
    QString writeArchive(const QString &name, QByteArrayView part, const QString &member = u"word/document.xml"_s,
        const QStringList &options = {}) const
    {
        write(u"parts/"_s + member, part);
        const QString made = path(u"made.zip"_s);
        const QStringList arguments = QStringList(u"-q"_s) + options + QStringList{made, member};
        EXPECT_TRUE(ChildProcess::run(
            {.program = u"/usr/bin/zip"_s, .arguments = arguments, .workingDirectory = path(u"parts"_s)})
                        .succeeded());
        QDir().mkpath(QFileInfo(path(name)).path());
        EXPECT_TRUE(QFile::rename(made, path(name)));
        return path(name);
    }

private:
    QTemporaryDir m_folder;
};

TEST(DocumentImporter, KeepsTheLineEndsOfAnEncodedTextAndLosesItsMark)
{
    const QString letter = u"Zoë wrote:\r\n“信任” \U0001F600\r\n\r\nnaïve café\r\n"_s;
    for (const QString &name : {u"utf-8"_s, u"utf-8-mark"_s, u"utf-16le-mark"_s, u"utf-16be-mark"_s, u"gb18030"_s})
        EXPECT_EQ(DocumentImporter::extract(fixture(name + u".txt"_s)).text, letter) << name.toStdString();
    EXPECT_EQ(DocumentImporter::extract(fixture(u"latin-1.txt"_s)).text, u"Zoë wrote:\r\nnaïve café\r\n"_s);
}

TEST_F(DocumentImport, OrderOfTheEncodings)
{
    EXPECT_EQ(DocumentImporter::extract(write(u"utf-8 before others.txt"_s, "\xC3\xA9\xC3\xA9")).text, u"éé"_s);
    EXPECT_EQ(DocumentImporter::extract(write(u"utf-16 only with mark.txt"_s, QByteArray("a\0b\0", 4))).text,
        QString::fromLatin1("a\0b\0", 4));
    EXPECT_EQ(DocumentImporter::extract(write(u"gb18030 before latin 1.txt"_s, "\xD0\xC5")).text, u"信"_s);
    EXPECT_EQ(DocumentImporter::extract(write(u"cut off.txt"_s, "caf\xC3")).text, u"cafÃ"_s);
    EXPECT_EQ(DocumentImporter::extract(write(u"empty.txt"_s, {})).text, QString());
}

TEST_F(DocumentImport, SourceKindIsTheExtension)
{
    const QList<std::pair<QString, QString>> kinds{{u"notes.TXT"_s, u"txt"_s}, {u"report.final.md"_s, u"md"_s},
        {u"story.Markdown"_s, u"markdown"_s}, {u"noextension"_s, u"txt"_s}, {u".hidden"_s, u"txt"_s},
        {u"dot."_s, u"txt"_s}, {u"folder.pdf/plain"_s, u"txt"_s}, {u"table.csv"_s, u"csv"_s}};
    for (const auto &[name, kind] : kinds)
        EXPECT_EQ(DocumentImporter::extract(write(name, "a")).sourceKind, kind) << name.toStdString();
    EXPECT_EQ(DocumentImporter::extract(write(u"rich.RTFD"_s, "{\\rtf1 a}")).sourceKind, u"rtf"_s);
}

TEST(DocumentImporter, ReadsAWordDocument)
{
    const auto [text, sourceKind] = DocumentImporter::extract(fixture(u"interview.docx"_s));
    EXPECT_EQ(sourceKind, u"docx"_s);
    EXPECT_EQ(text,
        u"Interview with Zoë\nTrust & doubt\nShe said “I trusted them” in a café, naïvely.\n"
        "Then she laughed \U0001F600 and wrote 信任 on the board.\n1 < 2 && 3 > 2 same paragraph after a tab\n\n"
        "Code\nTimes\nTrust\n12\nAfter the table.\nA second page."_s);
}

TEST(DocumentImporter, ReadsRichTextAndPdf)
{
    for (const QString &kind : {u"rtf"_s, u"pdf"_s}) {
        const auto [text, sourceKind] = DocumentImporter::extract(fixture(u"interview."_s + kind));
        EXPECT_EQ(sourceKind, kind);
        EXPECT_TRUE(text.startsWith(u"Interview with Zoë\n")); // a heading without a number
        EXPECT_TRUE(text.contains(u"laughed \U0001F600 and wrote 信任 on the board."));
        EXPECT_TRUE(text.trimmed().endsWith(u"\nA second page.")) << kind.toStdString();
    }
}

TEST(DocumentImporter, PassesOverBlankPages)
{
    EXPECT_EQ(DocumentImporter::readPDF(fixture(u"blank-pages.pdf"_s)), u"First page.\n\nFourth page."_s);
}

TEST_F(DocumentImport, TellsWhatIsWrong)
{
    EXPECT_EQ(complaintOf(fixture(u"scan.pdf"_s)),
        u"No text layer found in scan.pdf — it looks like a scanned PDF. OCR isn't supported yet."_s);
    EXPECT_EQ(complaintOf(fixture(u"locked.pdf"_s)), unreadable(u"locked.pdf"_s));
    EXPECT_EQ(complaintOf(write(u"broken.pdf"_s, "%PDF-1.4\njunk")), unreadable(u"broken.pdf"_s));
    EXPECT_EQ(complaintOf(path(u"missing.pdf"_s)), unreadable(u"missing.pdf"_s));
    EXPECT_EQ(complaintOf(write(u"plain %1.rtf"_s, "no rich text")), unreadable(u"plain %1.rtf"_s));
    EXPECT_EQ(complaintOf(write(u"empty.rtf"_s, "{\\rtf1}")), unreadable(u"empty.rtf"_s));
    EXPECT_EQ(ImportError(ImportError::Kind::empty).description(), u"The document appears to be empty."_s);
}

TEST_F(DocumentImport, FailureToReadTheBytesIsTheFileSystems)
{
    QDir().mkpath(path(u"bundle.rtfd"_s));
    QDir().mkpath(path(u"folder.txt"_s));
    EXPECT_THROW((void)DocumentImporter::extract(path(u"missing.txt"_s)), FileError);
    EXPECT_THROW((void)DocumentImporter::extract(path(u"missing.rtf"_s)), FileError);
    EXPECT_THROW((void)DocumentImporter::extract(path(u"folder.txt"_s)), FileError);
    EXPECT_THROW((void)DocumentImporter::extract(path(u"bundle.rtfd"_s)), FileError);
}

TEST_F(DocumentImport, NeverWaitsForAPipe)
{
    for (const QString &name : {u"pipe.txt"_s, u"pipe.rtf"_s, u"pipe.docx"_s, u"pipe.pdf"_s}) {
        ASSERT_EQ(::mkfifo(QFile::encodeName(path(name)).constData(), 0600), 0);
        EXPECT_FALSE(complaintOf(path(name)).isEmpty()) << name.toStdString();
    }
}

TEST_F(DocumentImport, WordPartIsStrictlyUtf8)
{
    EXPECT_EQ(DocumentImporter::readDocx(writeArchive(u"mark.docx"_s, "\xEF\xBB\xBF<?xml?><w:t>a</w:t>")), u"a"_s);
    EXPECT_EQ(DocumentImporter::readDocx(writeArchive(u"empty.docx"_s, {})), QString());
    EXPECT_EQ(complaintOf(writeArchive(u"latin.docx"_s, "<w:t>caf\xE9</w:t>")), unreadable(u"latin.docx"_s));
    EXPECT_EQ(complaintOf(writeArchive(u"cut.docx"_s, "<w:t>caf</w:t>\xC3")), unreadable(u"cut.docx"_s));
}

TEST_F(DocumentImport, WordDocumentThatIsNone)
{
    const QString whole = writeArchive(u"whole.docx"_s, "<w:t>a</w:t>");
    QFile file(whole);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QDir().mkpath(path(u"folder.docx"_s));
    EXPECT_EQ(
        complaintOf(write(u"cut.docx"_s, QByteArrayView(bytes).first(bytes.size() / 2))), unreadable(u"cut.docx"_s));
    EXPECT_EQ(complaintOf(write(u"text.docx"_s, "a")), unreadable(u"text.docx"_s));
    EXPECT_EQ(complaintOf(write(u"nothing.docx"_s, {})), unreadable(u"nothing.docx"_s));
    EXPECT_EQ(complaintOf(path(u"folder.docx"_s)), unreadable(u"folder.docx"_s));
    writeArchive(u"missing.docx.zip"_s, "<w:t>another</w:t>"); // isn't taken instead
    EXPECT_EQ(complaintOf(path(u"missing.docx"_s)), unreadable(u"missing.docx"_s));
    EXPECT_EQ(complaintOf(write(u"missing.docx"_s, "no archive")), unreadable(u"missing.docx"_s));
    EXPECT_EQ(complaintOf(writeArchive(u"other.docx"_s, "a", u"word/styles.xml"_s)), unreadable(u"other.docx"_s));
    EXPECT_EQ(complaintOf(writeArchive(u"locked.docx"_s, "a", u"word/document.xml"_s, {u"-P"_s, u"secret"_s})),
        unreadable(u"locked.docx"_s));
}

TEST_F(DocumentImport, LongDocumentCanBeStopped)
{
    const auto never = [] { return false; };
    EXPECT_THROW((void)DocumentImporter::extract(fixture(u"interview.pdf"_s), never), ImportStopped);
    const QString archive = writeArchive(u"long.docx"_s, QByteArray(20'000'000, 'x'));
    EXPECT_THROW((void)DocumentImporter::extract(archive, never), ImportStopped);
    EXPECT_EQ(complaintOf(writeArchive(u"bomb.docx"_s, QByteArray(70'000'000, 'x'))), unreadable(u"bomb.docx"_s));
}

} // namespace
