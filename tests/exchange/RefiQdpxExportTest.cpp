#include "exchange/RefiQdpxExport.h"
#include "exchange/RefiQdpx.h"
#include "exchange/UnpackedArchive.h"
#include "platform/AtomicFile.h"
#include "platform/ChildProcess.h"
#include "support/Complaint.h"
#include "support/TestArchive.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace RefiQdpx;

namespace {

QUuid numbered(int number)
{
    return QUuid(0xABCDEF01, 2, 3, 4, 5, 6, 7, 8, 9, 10, uchar(number));
}

QDateTime second(int number)
{
    return QDateTime(QDate(2024, 5, 31), QTime(23, 59, 0, 999), Qt::UTC).addSecs(number);
}

Code code(int number, const QString &name, std::optional<int> parent = {})
{
    Code result;
    result.id = numbered(number);
    result.name = name;
    result.colorHex = u"#112233"_s;
    if (parent)
        result.parentID = numbered(*parent);
    result.createdAt = second(number);
    return result;
}

Document document(int number, const QString &text)
{
    Document result;
    result.id = numbered(number);
    result.title = u"Interview"_s;
    result.text = text;
    result.addedAt = second(number);
    return result;
}

Coding coding(int number, int document, int code, qint64 start, qint64 length)
{
    return {{}, numbered(number), numbered(document), numbered(code), start, length, second(number)};
}

/// The values of an attribute, wherever it stands in the document.
QStringList values(const QByteArray &xml, const QString &attribute)
{
    QStringList result;
    const QRegularExpression pattern(u' ' + attribute + u"=\"([^\"]*)\""_s);
    const QString text = QString::fromUtf8(xml);
    for (auto match = pattern.globalMatch(text); match.hasNext();)
        result.append(match.next().captured(1));
    return result;
}

} // namespace

TEST(ProjectDocument, HoldsEverythingInOrder)
{
    constexpr qint64 highest = std::numeric_limits<qint64>::max();
    ExportInput input;
    input.project.name = u"A & B"_s;
    input.project.createdAt = QDateTime(QDate(1969, 12, 31), QTime(23, 59, 58, 500), Qt::UTC);
    input.project.modifiedAt = QDateTime(QDate(812, 2, 29), QTime(1, 2, 3, 4), Qt::OffsetFromUTC, 3600);
    Code child = code(2, u"Child"_s, 1);
    child.memo = u" why\r\n\tnot > "_s;
    child.colorHex = u"red"_s;
    input.codes = {child, code(1, u"<Trust>"_s)};
    Document late = document(12, u"\U0001F600 word\nend"_s);
    late.title = u"\"Late\"\n"_s;
    late.memo = u"memo"_s;
    input.documents = {late, document(11, u"early"_s)};
    input.codings = {coding(22, 12, 2, -5, 4), coding(23, 12, 99, 0, 4), coding(24, 99, 2, 0, 4),
        coding(25, 12, 2, -highest, -highest), coding(26, 12, 2, 11, 1), coding(27, 12, 2, highest, highest)};
    const QByteArray xml = buildProjectXML(input);
    static const QRegularExpression newGuid(u"<PlainTextSelection guid=\"[0-9A-F-]{36}\""_s);
    EXPECT_EQ(QString::fromUtf8(xml).replace(newGuid, u"<PlainTextSelection guid=\"\""_s).toUtf8(),
        R"(<?xml version="1.0" encoding="UTF-8"?>
<Project xmlns="urn:QDA-XML:project:1.0" name="A &amp; B" origin="Vorn 1.0" creatingUserGUID="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" modifyingUserGUID="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" creationDateTime="1969-12-31T23:59:58Z" modifiedDateTime="0812-02-29T00:02:03Z">
    <Users>
        <User guid="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" name="Vorn User"/>
    </Users>
    <CodeBook>
        <Codes>
            <Code guid="ABCDEF01-0002-0003-0405-060708090A01" name="&lt;Trust&gt;" isCodable="true" color="#112233">
                <Code guid="ABCDEF01-0002-0003-0405-060708090A02" name="Child" isCodable="true" color="#8E8E93">
                    <Description>why&#13;
	not &gt;</Description>
                </Code>
            </Code>
        </Codes>
    </CodeBook>
    <Sources>
        <TextSource guid="ABCDEF01-0002-0003-0405-060708090A0B" name="Interview" plainTextPath="internal://ABCDEF01-0002-0003-0405-060708090A0B.txt" creatingUser="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" modifyingUser="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" creationDateTime="2024-05-31T23:59:11Z" modifiedDateTime="2024-05-31T23:59:11Z"/>
        <TextSource guid="ABCDEF01-0002-0003-0405-060708090A0C" name="&quot;Late&quot;&#10;" plainTextPath="internal://ABCDEF01-0002-0003-0405-060708090A0C.txt" creatingUser="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" modifyingUser="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" creationDateTime="2024-05-31T23:59:12Z" modifiedDateTime="2024-05-31T23:59:12Z">
            <Description>memo</Description>
            <PlainTextSelection guid="" name="😀 w" startPosition="0" endPosition="4" creatingUser="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" modifyingUser="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" creationDateTime="2024-05-31T23:59:22Z" modifiedDateTime="2024-05-31T23:59:22Z">
                <Coding guid="ABCDEF01-0002-0003-0405-060708090A16" creatingUser="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" creationDateTime="2024-05-31T23:59:22Z">
                    <CodeRef targetGUID="ABCDEF01-0002-0003-0405-060708090A02"/>
                </Coding>
            </PlainTextSelection>
        </TextSource>
    </Sources>
</Project>
)");
    EXPECT_NE(buildProjectXML(input), xml); // its passages have new identifiers
}

TEST(ProjectDocument, NamesPassagesByTheirBeginningAndCutsThemAtTheEnd)
{
    ExportInput input;
    input.codes = {code(1, u"Trust"_s)};
    input.documents = {document(2, u"y"_s.repeated(119) + u"\U0001F600"_s.repeated(300))};
    input.codings = {coding(4, 2, 1, 0, 500), coding(3, 2, 1, 700, std::numeric_limits<qint64>::max())};
    const QByteArray xml = buildProjectXML(input);
    EXPECT_TRUE(values(xml, u"name"_s).contains(u"y"_s.repeated(119) + QChar::ReplacementCharacter));
    EXPECT_EQ(values(xml, u"endPosition"_s), (QStringList{u"719"_s, u"500"_s})); // in the order of their moments
}

TEST(CodebookDocument, KeepsNineLevelsWhateverTheShapeOfTheTree)
{
    const QList<Code> strange{code(1, u"cycle"_s, 2), code(2, u"cycle"_s, 1), code(3, u"own parent"_s, 3),
        code(4, u"lost"_s, 99), code(5, u"Top"_s)};
    EXPECT_EQ(buildCodebookXML(strange), R"(<?xml version="1.0" encoding="UTF-8"?>
<CodeBook xmlns="urn:QDA-XML:codebook:1.0" origin="Vorn 1.0">
    <Codes>
        <Code guid="ABCDEF01-0002-0003-0405-060708090A05" name="Top" isCodable="true" color="#112233"/>
    </Codes>
</CodeBook>
)");

    QList<Code> chain;
    for (int number = 0; number < 10'000; ++number) {
        chain.prepend(code(0, QString::number(number)));
        chain.first().id = QUuid::createUuid();
        if (number > 0)
            chain.first().parentID = chain.at(1).id;
    }
    EXPECT_EQ(values(buildCodebookXML(chain), u"name"_s), u"0 1 2 3 4 5 6 7 8"_s.split(u' '));
    const QList<Code> siblings{code(0, u"3"_s), code(0, u"1"_s), code(0, u"2"_s)}; // of the same moment
    EXPECT_EQ(values(buildCodebookXML(siblings), u"name"_s), u"3 1 2"_s.split(u' '));
}

TEST(ProjectDocument, HasColorsAndMemosOfOneForm)
{
    const QList<std::pair<QString, QString>> colors{{u"#abc"_s, u"#AABBCC"_s}, {u" #12ab3f\t\u3000"_s, u"#12AB3F"_s},
        {u"12#ab#3f#"_s, u"#12AB3F"_s}, {u""_s, u"#8E8E93"_s}, {u"\n12ab3f"_s, u"#8E8E93"_s},
        {u"# 12ab3f"_s, u"#8E8E93"_s}, {u"#FF00FF00"_s, u"#8E8E93"_s}, {u"#FF00"_s, u"#8E8E93"_s},
        {u"#１２３"_s, u"#8E8E93"_s}, {u"#///"_s, u"#8E8E93"_s}, {u"#:::"_s, u"#8E8E93"_s}, {u"#GGG"_s, u"#8E8E93"_s},
        {u"#09f"_s, u"#0099FF"_s}};
    for (const auto &[given, normalized] : colors)
        EXPECT_EQ(normalizedColor(given), normalized) << given.toStdString();
    EXPECT_EQ(trimmedMemo(u" \r\n a \n b\u2029\t"_s), u"a \n b"_s);
    EXPECT_EQ(trimmedMemo(u" \n\u00A0\u0085"_s), std::nullopt);
    EXPECT_EQ(trimmedMemo(std::nullopt), std::nullopt);
}

TEST(ExportedArchive, ReplacesAFileUnderAnyNameOrLeavesNothingBehind)
{
    const OwnTemporaryFolder folder;
    const auto complaint = [&](const QString &name) {
        return complaintAbout([&] { exportArchive({}, folder.path(name)); });
    };
    for (const QString &name : {u"study"_s, u"study.qdpx"_s, u".study"_s, u"study."_s, u"-s*[d] 研究"_s}) {
        SCOPED_TRACE(name.toStdString());
        const QString path = folder.write(name, TestArchive().add("old.txt", "old").bytes());
        folder.write(name + u".zip"_s, "another's");
        EXPECT_EQ(complaint(name), QString());
        const UnpackedArchive archive(path);
        EXPECT_TRUE(archive.path(u"project.qde"_s) && !archive.path(u"old.txt"_s));
        EXPECT_EQ(AtomicFile::readFile(path + u".zip"_s), "another's");
        EXPECT_TRUE(QFile::permissions(path).testFlag(QFile::ReadOther));
    }
    for (const QString &name : {u"no/a.qdpx"_s, u"no/a"_s})
        EXPECT_EQ(complaint(name), u"/usr/bin/zip failed with status 15"_s);
    for (const QString &name : {u"taken.qdpx"_s, u"taken"_s}) {
        folder.write(name + u"/file"_s, "text");
        EXPECT_NE(complaint(name), QString());
        EXPECT_EQ(AtomicFile::readFile(folder.path(name + u"/file"_s)), "text");
    }
    EXPECT_EQ(
        QDir(folder.path({})).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 5 * 2 + 2);
    EXPECT_FALSE(folder.hasLeftovers());
    const auto notStarted = [] { throwUnlessSucceeded(u"/no/such"_s, ChildProcess::run({u"/no/such"_s, {}})); };
    EXPECT_EQ(complaintAbout(notStarted), u"could not run /no/such"_s);
}
