#include "exchange/DocumentImporter.h"

#include "exchange/ImportStep.h"
#include "exchange/WordText.h"
#include "platform/AtomicFile.h"
#include "platform/LocalizedError.h"
#include "support/Complaint.h"
#include "support/PlainWordText.h"
#include "support/TestArchive.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace DocumentImporter;

namespace {

const QString fixtures = QStringLiteral(VORN_FIXTURES "/");

class DocumentImport : public testing::Test, protected OwnTemporaryFolder {
protected:
    QString writeDocx(const QString &name, const QByteArray &part) const
    {
        return write(name, TestArchive().add("word/document.xml", part).bytes());
    }
};

TEST_F(DocumentImport, TriesTheEncodingsInOrderAndTakesTheExtensionForTheKind)
{
    const QList<std::pair<QByteArray, QString>> texts{{"\xC3\xA9\xC3\xA9\r\n", u"éé\r\n"_s}, {"\xD0\xC5", u"信"_s},
        {QByteArray("a\0b\0", 4), QString::fromLatin1("a\0b\0", 4)}, {QByteArray("\xFF\xFE\0a", 4), u"\u6100"_s},
        {"caf\xC3", u"cafÃ"_s}, {{}, {}}};
    for (const auto &[bytes, text] : texts)
        EXPECT_EQ(extract(write(u"a.txt"_s, bytes)).text, text);
    const QList<std::pair<QString, QString>> kinds{{u"notes.TXT"_s, u"txt"_s}, {u"report.final.md"_s, u"md"_s},
        {u"story.Markdown"_s, u"markdown"_s}, {u"noextension"_s, u"txt"_s}, {u".hidden"_s, u"txt"_s},
        {u"dot."_s, u"txt"_s}, {u"folder.pdf/plain"_s, u"txt"_s}, {u"table.csv"_s, u"csv"_s},
        {u"rich.RTFD"_s, u"rtf"_s}};
    for (const auto &[name, kind] : kinds)
        EXPECT_EQ(extract(write(name, "{\\rtf1 a}")).sourceKind, kind) << name.toStdString();
}

TEST_F(DocumentImport, ReadsDocumentsOfOtherPrograms)
{
    EXPECT_EQ(extract(fixtures + u"interview.docx"_s).text,
        u"Interview with Zoë\nTrust & doubt\nShe said “I trusted them” in a café, naïvely.\n"
        "Then she laughed \U0001F600 and wrote 信任 on the board.\n1 < 2 && 3 > 2 same paragraph after a tab\n\n"
        "Code\nTimes\nTrust\n12\nAfter the table.\nA second page."_s);
    for (const QString &kind : {u"rtf"_s, u"pdf"_s, u"docx"_s}) {
        const auto [text, sourceKind] = extract(fixtures + u"interview."_s + kind);
        EXPECT_EQ(sourceKind, kind);
        EXPECT_TRUE(text.startsWith(u"Interview with Zoë\n")); // a heading without a number
        EXPECT_TRUE(text.contains(u"laughed \U0001F600 and wrote 信任 on the board."));
        EXPECT_TRUE(text.trimmed().endsWith(u"\nA second page.")) << kind.toStdString();
    }
    EXPECT_EQ(readPDF(fixtures + u"blank-pages.pdf"_s), u"First page.\n\nFourth page."_s);
    const QRegularExpression byColumn(u"two columns.*Left alpha.*first.*Left hotel.*Right alpha.*second.*Right hotel"_s,
        QRegularExpression::DotMatchesEverythingOption);
    EXPECT_TRUE(readPDF(fixtures + u"two-columns.pdf"_s).contains(byColumn));
}

TEST_F(DocumentImport, TellsWhatIsWrongAndPrintsNothing)
{
    const auto complaintOn = [](const QString &path) { return complaintAbout([&] { (void)extract(path); }); };
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    EXPECT_EQ(complaintOn(fixtures + u"scan.pdf"_s),
        u"No text layer found in scan.pdf — it looks like a scanned PDF. OCR isn't supported yet."_s);
    const QByteArray archive = AtomicFile::readFile(writeDocx(u"whole.docx"_s, "<w:t>a</w:t>"));
    for (const QString &folder : {u"folder.docx"_s, u"bundle.rtfd"_s, u"folder.txt"_s})
        QDir().mkpath(path(folder));
    for (const QString &wrong : {fixtures + u"locked.pdf"_s, write(u"broken.pdf"_s, "%PDF-1.4\njunk"),
             write(u"cut.pdf"_s, AtomicFile::readFile(fixtures + u"scan.pdf"_s).first(700)), path(u"missing.pdf"_s),
             write(u"plain %1.rtf"_s, "no rich text"), write(u"empty.rtf"_s, "{\\rtf1}"),
             writeDocx(u"latin.docx"_s, "<w:t>caf\xE9</w:t>"), writeDocx(u"cut.docx"_s, "<w:t>caf</w:t>\xC3"),
             write(u"half.docx"_s, archive.first(archive.size() / 2)), write(u"text.docx"_s, "a"),
             path(u"folder.docx"_s), path(u"missing.docx"_s),
             write(u"other.docx"_s, TestArchive().add("word/styles.xml", "a").bytes()),
             writeDocx(u"bomb.docx"_s, QByteArray(70'000'000, 'x'))})
        EXPECT_EQ(complaintOn(wrong), u"Couldn't read "_s + QFileInfo(wrong).fileName() + u'.');
    EXPECT_EQ(testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(ImportError(ImportError::Kind::empty).description(), u"The document appears to be empty."_s);
    EXPECT_EQ(readDocx(writeDocx(u"mark.docx"_s, "\xEF\xBB\xBF<?xml?><w:t>a</w:t>")), u"a"_s);
    EXPECT_EQ(readDocx(writeDocx(u"empty.docx"_s, {})), QString());

    for (const QString &name : {u"bundle.rtfd"_s, u"folder.txt"_s, u"missing.txt"_s, u"missing.rtf"_s})
        EXPECT_THROW((void)extract(path(name)), FileError) << name.toStdString();
    for (const QString &name : {u"pipe.txt"_s, u"pipe.rtf"_s, u"pipe.docx"_s, u"pipe.pdf"_s}) { // could block for ever
        ASSERT_EQ(::mkfifo(QFile::encodeName(path(name)).constData(), 0600), 0);
        EXPECT_NE(complaintOn(path(name)), QString()) << name.toStdString();
    }
}

TEST_F(DocumentImport, CanBeStopped)
{
    for (const QString &path : {fixtures + u"interview.pdf"_s, writeDocx(u"short.docx"_s, "a"),
             writeDocx(u"long.docx"_s, QByteArray(20'000'000, 'x'))})
        EXPECT_THROW((void)extract(path, [] { return false; }), ImportStopped) << path.toStdString();
}

TEST(WordText, AgreesWithThePlainVersion)
{
    const QStringList pieces = u"<|>|&|amp;|lt;|gt;|&lt;|&gt;|&amp;|&quot;|&apos;|&#|x|41|D800|110000|FFFFFFFFF|"
                               "4294967361|10FFFF|57343|E000|0000000000000000000000065|;|#|1|<w:br/>|<w:br />|<w:tab/>|"
                               "</w:p>|<w:br|/>| />|</w:|p>|<w:p>|<w:t xml:space=\"preserve\">|<>|\n|\r|\r\n| |\t|a|"
                               "\u00A0|\u2028|\u3000|\u0085|\v|\f|é|e\u0301|一|\u200D|\u200B|\U0001F600|&#13;|&#10;|"
                               "&#x20;|&#9;|&#x2029;|&#x10FFFF;|&#1114112;|\0"_s.split(u'|');
    QRandomGenerator random(11);
    for (int round = 0; round < 10'000; ++round) {
        // Few kinds of pieces at a time, so that pieces that belong together meet.
        const qsizetype first = random.bounded(pieces.size());
        const qsizetype kinds = 1 + random.bounded(round % 2 == 0 ? 8 : pieces.size());
        QString xml;
        for (int count = random.bounded(20); count > 0; --count)
            xml += pieces[(first + random.bounded(kinds)) % pieces.size()];
        ASSERT_EQ(WordText::plainText(xml), PlainWordText::plainText(xml)) << xml.toStdString();
        ASSERT_EQ(WordText::decodeNumericEntities(xml), PlainWordText::decodeNumericEntities(xml)) << xml.toStdString();
    }
    // Unlike the plain version it also takes invalid UTF-16.
    EXPECT_EQ(WordText::plainText(u"a<"_s + QChar(0xD83D) + u">b &#x41;"_s + QChar(0xDE00)), u"ab A"_s + QChar(0xDE00));
}

/// Texts that a careless reader would take quadratic time for.
TEST(WordText, TakesLinearTime)
{
    constexpr int times = 1'000'000;
    EXPECT_EQ(WordText::plainText(QString(5 * times, u'<')).size(), 5 * times);
    EXPECT_EQ(WordText::plainText(u"<a "_s + u"<w:br/>"_s.repeated(times) + u'b'), u"<a b"_s);
    EXPECT_EQ(WordText::plainText(u"<>&#"_s.repeated(times)).size(), 4 * times);
    EXPECT_EQ(WordText::plainText(u"&#x"_s + QString(times, u'1')).size(), times + 3);
    EXPECT_EQ(WordText::plainText(u"a"_s + u"\r\n "_s.repeated(times) + u'b').size(), 3 * times + 2);
    EXPECT_EQ(WordText::plainText(u"a"_s + u" \n\t"_s.repeated(times) + u'b'), u"a\n\nb"_s);
}

} // namespace
