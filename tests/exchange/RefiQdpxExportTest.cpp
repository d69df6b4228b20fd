#include "exchange/RefiQdpxExport.h"
#include "exchange/RefiQdpx.h"
#include "platform/AtomicFile.h"
#include "platform/ChildProcess.h"
#include "support/Cases.h"
#include "support/Complaint.h"
#include "support/Printing.h"
#include "support/TestArchive.h"

#include <QDir>
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

Coding coding(int number, const Document &document, const Code &code, qint64 start, qint64 length)
{
    Coding result;
    result.id = numbered(number);
    result.documentID = document.id;
    result.codeID = code.id;
    result.start = start;
    result.length = length;
    result.createdAt = second(number);
    return result;
}

ExportInput project()
{
    ExportInput input;
    input.project.name = u"A & B"_s;
    input.project.createdAt = second(0);
    input.project.modifiedAt = second(1);
    return input;
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

QByteArray withoutSelectionGuids(const QByteArray &xml)
{
    static const QRegularExpression guid(u"<PlainTextSelection guid=\"[0-9A-F-]{36}\""_s);
    return QString::fromUtf8(xml).replace(guid, u"<PlainTextSelection guid=\"\""_s).toUtf8();
}

} // namespace

using ColorCase = Case<QString>;
using Colors = testing::TestWithParam<ColorCase>;

TEST_P(Colors, AreBroughtIntoOneForm)
{
    EXPECT_EQ(normalizedColor(GetParam().given), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Forms, Colors,
    testing::Values(ColorCase{"three_digits", u"#abc"_s, u"#AABBCC"_s},
        ColorCase{"blanks", u" #12ab3f\t\u3000"_s, u"#12AB3F"_s},
        ColorCase{"signs_anywhere", u"12#ab#3f#"_s, u"#12AB3F"_s}, ColorCase{"empty", u""_s, u"#8E8E93"_s},
        ColorCase{"line_break_is_no_blank", u"\n12ab3f"_s, u"#8E8E93"_s},
        ColorCase{"blank_behind_the_sign", u"# 12ab3f"_s, u"#8E8E93"_s},
        ColorCase{"eight_digits", u"#FF00FF00"_s, u"#8E8E93"_s}, ColorCase{"wide_digits", u"#１２３"_s, u"#8E8E93"_s}),
    rowName);

TEST(Memos, AreTrimmedOrLeftOut)
{
    EXPECT_EQ(trimmedMemo(u" \r\n a \n b\u2029\t"_s), u"a \n b"_s);
    EXPECT_EQ(trimmedMemo(u" \n\u00A0\u0085"_s), std::nullopt);
    EXPECT_EQ(trimmedMemo(QString()), std::nullopt);
    EXPECT_EQ(trimmedMemo(std::nullopt), std::nullopt);
}

TEST(ProjectDocument, HoldsEverythingInOrder)
{
    ExportInput input = project();
    Code child = code(2, u"Child"_s, 1);
    child.memo = u" why\r\n\tnot > "_s;
    child.colorHex = u"red"_s;
    input.codes = {child, code(1, u"<Trust>"_s)};
    Document late = document(12, u"\U0001F600 word\nend"_s);
    late.title = u"\"Late\"\n"_s;
    late.memo = u"memo"_s;
    input.documents = {late, document(11, u"early"_s)};
    input.codings = {coding(22, late, child, 3, 4), coding(21, late, child, -5, 2)};
    EXPECT_EQ(withoutSelectionGuids(buildProjectXML(input)), R"(<?xml version="1.0" encoding="UTF-8"?>
<Project xmlns="urn:QDA-XML:project:1.0" name="A &amp; B" origin="Vorn 1.0" creatingUserGUID="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" modifyingUserGUID="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" creationDateTime="2024-05-31T23:59:00Z" modifiedDateTime="2024-05-31T23:59:01Z">
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
            <PlainTextSelection guid="" name="😀" startPosition="0" endPosition="2" creatingUser="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" modifyingUser="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" creationDateTime="2024-05-31T23:59:21Z" modifiedDateTime="2024-05-31T23:59:21Z">
                <Coding guid="ABCDEF01-0002-0003-0405-060708090A15" creatingUser="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" creationDateTime="2024-05-31T23:59:21Z">
                    <CodeRef targetGUID="ABCDEF01-0002-0003-0405-060708090A02"/>
                </Coding>
            </PlainTextSelection>
            <PlainTextSelection guid="" name="word" startPosition="3" endPosition="7" creatingUser="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" modifyingUser="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" creationDateTime="2024-05-31T23:59:22Z" modifiedDateTime="2024-05-31T23:59:22Z">
                <Coding guid="ABCDEF01-0002-0003-0405-060708090A16" creatingUser="6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11" creationDateTime="2024-05-31T23:59:22Z">
                    <CodeRef targetGUID="ABCDEF01-0002-0003-0405-060708090A02"/>
                </Coding>
            </PlainTextSelection>
        </TextSource>
    </Sources>
</Project>
)");
}

TEST(ProjectDocument, DiffersOnlyInSelectionsFromTimeToTime)
{
    ExportInput input = project();
    input.codes = {code(1, u"Trust"_s)};
    input.documents = {document(2, u"some text"_s)};
    for (int number = 3; number < 100; ++number)
        input.codings.append(coding(number, input.documents.first(), input.codes.first(), 0, 4));
    const QByteArray first = buildProjectXML(input);
    const QByteArray again = buildProjectXML(input);
    EXPECT_EQ(withoutSelectionGuids(first), withoutSelectionGuids(again));
    QStringList guids = values(first, u"guid"_s) + values(again, u"guid"_s);
    EXPECT_EQ(guids.removeDuplicates(), 3 + 97); // user, code, source and codings are the same
}

TEST(CodebookDocument, IsTheCodesAlone)
{
    EXPECT_EQ(buildCodebookXML({code(1, u"Trust"_s)}), R"(<?xml version="1.0" encoding="UTF-8"?>
<CodeBook xmlns="urn:QDA-XML:codebook:1.0" origin="Vorn 1.0">
    <Codes>
        <Code guid="ABCDEF01-0002-0003-0405-060708090A01" name="Trust" isCodable="true" color="#112233"/>
    </Codes>
</CodeBook>
)");
    EXPECT_TRUE(buildCodebookXML({}).contains("<Codes/>"));
    EXPECT_TRUE(buildProjectXML(project()).contains("<Sources/>"));
}

TEST(CodeTree, KeepsTheOrderOfEqualMoments)
{
    QList<Code> siblings;
    for (const int number : {3, 1, 2})
        siblings.append(code(number, QString::number(number)));
    for (Code &sibling : siblings)
        sibling.createdAt = second(0);
    EXPECT_EQ(values(buildCodebookXML(siblings), u"name"_s), u"3 1 2"_s.split(u' '));
}

TEST(CodeTree, KeepsNineLevelsWhateverItsShape)
{
    QList<Code> codes{code(1, u"cycle"_s, 2), code(2, u"cycle"_s, 1), code(3, u"own parent"_s, 3),
        code(4, u"lost"_s, 99), code(5, u"top"_s)};
    EXPECT_EQ(values(buildCodebookXML(codes), u"name"_s), QStringList{u"top"_s});

    QList<Code> chain;
    for (int number = 0; number < 10'000; ++number) {
        chain.prepend(code(0, QString::number(number)));
        chain.first().id = QUuid::createUuid();
        if (number > 0)
            chain.first().parentID = chain.at(1).id;
    }
    EXPECT_EQ(values(buildCodebookXML(chain), u"name"_s), u"0 1 2 3 4 5 6 7 8"_s.split(u' '));
}

TEST(ProjectDocument, CutsPassagesToTheTextAndLeavesOutTheRest)
{
    ExportInput input = project();
    const Code known = code(1, u"Trust"_s);
    input.codes = {known};
    input.documents = {document(2, u"some text"_s)};
    input.codings = {coding(3, input.documents.first(), code(9, u"gone"_s), 0, 4),
        coding(4, document(8, u"another's"_s), known, 0, 4)};
    constexpr qint64 highest = std::numeric_limits<qint64>::max();
    for (const auto &[start, length] : {std::pair<qint64, qint64>{1, highest}, {-highest, -highest}, {9, 1}, {-4, 3}})
        input.codings.append(coding(5, input.documents.first(), known, start, length));
    EXPECT_EQ(values(buildProjectXML(input), u"startPosition"_s), (QStringList{u"1"_s, u"0"_s}));
    EXPECT_EQ(values(buildProjectXML(input), u"endPosition"_s), (QStringList{u"9"_s, u"3"_s}));
}

TEST(ProjectDocument, NamesAPassageByItsBeginning)
{
    ExportInput input = project();
    input.codes = {code(1, u"Trust"_s)};
    input.documents = {document(2, u"y"_s.repeated(119) + u"\U0001F600"_s.repeated(300))};
    input.codings = {coding(3, input.documents.first(), input.codes.first(), 0, 500)};
    const QByteArray xml = buildProjectXML(input);
    EXPECT_TRUE(values(xml, u"name"_s).contains(u"y"_s.repeated(119) + QChar::ReplacementCharacter));
    EXPECT_EQ(values(xml, u"endPosition"_s), QStringList{u"500"_s});
}

TEST(ProjectDocument, CutsFractionsOfSecondsAlsoBefore1970)
{
    ExportInput input = project();
    input.project.createdAt = QDateTime(QDate(1969, 12, 31), QTime(23, 59, 58, 500), Qt::UTC);
    input.project.modifiedAt = QDateTime(QDate(812, 2, 29), QTime(1, 2, 3, 4), Qt::OffsetFromUTC, 3600);
    const QByteArray xml = buildProjectXML(input);
    EXPECT_EQ(values(xml, u"creationDateTime"_s), QStringList{u"1969-12-31T23:59:58Z"_s});
    EXPECT_EQ(values(xml, u"modifiedDateTime"_s), QStringList{u"0812-02-29T00:02:03Z"_s});
}

namespace {

/// What unzip says or shows of an archive.
QByteArray unzipped(const QString &archive, const QStringList &options, const QStringList &members = {})
{
    const auto result = ChildProcess::run({.program = u"/usr/bin/unzip"_s,
        .arguments = options + QStringList{archive} + members,
        .outputLimit = 1 << 20});
    EXPECT_TRUE(result.succeeded());
    return result.output;
}

QString complaint(const ExportInput &input, const QString &destination)
{
    return complaintAbout([&] { exportArchive(input, destination); });
}

} // namespace

TEST(ExportedArchive, HoldsTheTextAsItIs)
{
    const OwnTemporaryFolder folder;
    ExportInput input = project();
    input.documents = {
        document(1, u"\uFEFFa\r\nb\rc\n\u2028ä中\U0001F600"_s + QChar(0) + QChar(0xDE00)), document(2, {})};
    const QString archive = folder.path(u"a.qdpx"_s);
    exportArchive(input, archive);
    const QString member = u"sources/ABCDEF01-0002-0003-0405-060708090A01.txt"_s;
    EXPECT_EQ(unzipped(archive, {u"-Z1"_s}).count('\n'), 4); // the document, the folder, and the empty text, too
    EXPECT_EQ(unzipped(archive, {u"-p"_s}, {member}),
        "\uFEFF\uFEFFa\r\nb\rc\n\u2028ä中\U0001F600" + QByteArray(1, '\0') + "\uFFFD"); // the text's own mark stays
    EXPECT_EQ(unzipped(archive, {u"-p"_s}, {u"project.qde"_s}), buildProjectXML(input));
    EXPECT_FALSE(folder.hasLeftovers());
}

TEST(ExportedArchive, ReplacesAFileUnderAnyName)
{
    const OwnTemporaryFolder folder;
    for (const QString &name : {u"study"_s, u"study.qdpx"_s, u".study"_s, u"study."_s, u"-s*[d] 研究"_s}) {
        AtomicFile::write(folder.path(name), TestArchive().add("old.txt", "old").bytes());
        AtomicFile::write(folder.path(name) + u".zip"_s, "another's");
        EXPECT_EQ(complaint(project(), folder.path(name)), QString()) << name.toStdString();
        AtomicFile::write(folder.path(u"copy.zip"_s), AtomicFile::readFile(folder.path(name)));
        EXPECT_EQ(unzipped(folder.path(u"copy.zip"_s), {u"-Z1"_s}), "project.qde\nsources/\n") << name.toStdString();
        EXPECT_EQ(AtomicFile::readFile(folder.path(name) + u".zip"_s), "another's");
    }
    EXPECT_EQ(QDir(folder.path({})).entryList(QDir::Files | QDir::Hidden).size(), 5 * 2 + 1);
    EXPECT_FALSE(folder.hasLeftovers());
}

TEST(ExportedArchive, LeavesNothingBehindWhenItFails)
{
    const OwnTemporaryFolder folder;
    EXPECT_EQ(complaint(project(), folder.path(u"no/a.qdpx"_s)), u"/usr/bin/zip failed with status 15"_s);
    EXPECT_EQ(complaint(project(), folder.path(u"no/a"_s)), u"/usr/bin/zip failed with status 15"_s);
    for (const QString &name : {u"taken.qdpx"_s, u"taken"_s}) {
        QDir(folder.path({})).mkpath(name);
        AtomicFile::write(folder.path(name + u"/file"_s), "text");
        EXPECT_NE(complaint(project(), folder.path(name)), QString());
        EXPECT_EQ(AtomicFile::readFile(folder.path(name + u"/file"_s)), "text");
    }
    EXPECT_EQ(QDir(folder.path({})).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 2);
    EXPECT_FALSE(folder.hasLeftovers());
}

TEST(RunCommand, TellsHowAProgramFailed)
{
    const auto complaintOf = [](const QString &program, const QStringList &arguments) {
        return complaintAbout(
            [&] { throwUnlessSucceeded(program, ChildProcess::run({.program = program, .arguments = arguments})); });
    };
    EXPECT_EQ(complaintOf(u"/bin/sh"_s, {u"-c"_s, u"exit 0"_s}), QString());
    EXPECT_EQ(complaintOf(u"/bin/sh"_s, {u"-c"_s, u"exit 7"_s}), u"/bin/sh failed with status 7"_s);
    EXPECT_EQ(complaintOf(u"/no/such program"_s, {}), u"could not run /no/such program"_s);
}
