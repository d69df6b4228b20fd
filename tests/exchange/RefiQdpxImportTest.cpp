#include "exchange/RefiQdpxImport.h"
#include "exchange/RefiQdpx.h"
#include "platform/AtomicFile.h"
#include "records/AppDatabase.h"
#include "records/Code.h"
#include "records/Coding.h"
#include "records/Document.h"
#include "records/database/Request.h"
#include "support/Cases.h"
#include "support/Complaint.h"
#include "support/Printing.h"
#include "support/TestArchive.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace RefiQdpx;

namespace {

/// A project of its own database, and what archives bring into it. Afterwards no file may be left anywhere.
class QdpxImport : public testing::Test {
protected:
    ~QdpxImport() override { EXPECT_FALSE(m_folder.hasLeftovers()); }

    ImportSummary import(const TestArchive &archive)
    {
        AtomicFile::write(m_folder.path(u"study.qdpx"_s), archive.bytes());
        return importQdpx(m_folder.path(u"study.qdpx"_s), *m_queue, m_projectID);
    }
    ImportSummary import(const QByteArray &document) { return import(TestArchive().add("project.qde", document)); }

    /// What the import fails with, or "" if it doesn't.
    QString complaint(const TestArchive &archive)
    {
        return complaintAbout([&] { import(archive); });
    }

    template <typename Record>
    [[nodiscard]] QList<Record> all() const
    {
        return m_queue->read([](Database &database) { return Record::all().fetchAll(database); });
    }
    [[nodiscard]] bool isEmpty() const
    {
        return all<Code>().isEmpty() && all<Document>().isEmpty() && all<Coding>().isEmpty();
    }

    /// One line per code: "name color memo <parent".
    [[nodiscard]] QStringList codes() const
    {
        const QList<Code> records = all<Code>();
        QHash<QUuid, QString> names;
        for (const Code &code : records)
            names.insert(code.id, code.name);
        QStringList lines;
        for (const Code &code : records)
            lines.append(code.name + u' ' + code.colorHex + (code.memo ? u" memo="_s + *code.memo : u""_s)
                + (code.parentID ? u" <"_s + names.value(*code.parentID, u"nobody"_s) : u""_s));
        return lines;
    }
    /// One line per coding: "code start+length".
    [[nodiscard]] QStringList codings() const
    {
        QHash<QUuid, QString> names;
        for (const Code &code : all<Code>())
            names.insert(code.id, code.name);
        QStringList lines;
        for (const Coding &coding : all<Coding>())
            lines.append(names.value(coding.codeID, u"nobody"_s) + u' ' + QString::number(coding.start) + u'+'
                + QString::number(coding.length));
        return lines;
    }

    OwnTemporaryFolder m_folder;
    std::unique_ptr<DatabaseQueue> m_queue = AppDatabase::makeFreshQueue();
    QUuid m_projectID = QUuid::createUuid();
};

QByteArray project(const QByteArray &codes, const QByteArray &sources = {})
{
    return "<Project><CodeBook><Codes>" + codes + "</Codes></CodeBook><Sources>" + sources + "</Sources></Project>";
}

/// A source with its text inside, thirty units long, in which `selections` are coded.
QByteArray coded(const QByteArray &selections)
{
    return "<TextSource name='T'><PlainTextContent>" + QByteArray(30, 'x') + "</PlainTextContent>" + selections
        + "</TextSource>";
}

QByteArray selection(const QByteArray &start, const QByteArray &end, const QByteArray &codings)
{
    return "<PlainTextSelection startPosition='" + start + "' endPosition='" + end + "'>" + codings
        + "</PlainTextSelection>";
}

QByteArray referenceTo(const QByteArray &guid)
{
    return "<Coding><CodeRef targetGUID='" + guid + "'/></Coding>";
}

} // namespace

TEST_F(QdpxImport, MakesNewRecordsOfTheProject)
{
    const QDateTime before = QDateTime::currentDateTimeUtc().addMSecs(-1);
    const QByteArray document = project(
        "<Code guid='C1' name='Trust' color='12ab3f'><Description> why\n</Description></Code>",
        "<TextSource name='Talk'><Description> m </Description><PlainTextContent>It's me \U0001F600</PlainTextContent>"
            + selection("1", "4", referenceTo("C1")) + "</TextSource>");
    EXPECT_EQ(import(document), (ImportSummary{1, 1, 1}));
    EXPECT_EQ(import(document), (ImportSummary{1, 1, 1})); // twice makes everything twice

    const QDateTime after = QDateTime::currentDateTimeUtc();
    EXPECT_EQ(codes(), QStringList(2, u"Trust #12AB3F memo=why"_s));
    EXPECT_EQ(codings(), QStringList(2, u"Trust 1+3"_s));
    const QList<Document> documents = all<Document>();
    for (const Document &each : documents) {
        EXPECT_EQ(each.projectID, m_projectID);
        EXPECT_EQ(each.title, u"Talk"_s);
        EXPECT_EQ(each.text, u"It's me \U0001F600"_s);
        EXPECT_EQ(each.memo, u"m"_s);
        EXPECT_EQ(each.sourceKind, u"qdpx"_s);
        EXPECT_EQ(each.wordCount, 3);
        EXPECT_EQ(each.charCount, 9);
        EXPECT_TRUE(each.addedAt >= before && each.addedAt <= after);
    }
    EXPECT_NE(documents[0].id, documents[1].id);
    EXPECT_EQ(all<Coding>()[1].documentID, documents[1].id);
    EXPECT_EQ(all<Code>()[0].projectID, m_projectID);
    EXPECT_TRUE(all<Code>()[0].createdAt >= before && all<Coding>()[0].createdAt <= after);
}

using CodesCase = Case<QByteArray, QStringList>;
class ImportedCodes : public QdpxImport, public testing::WithParamInterface<CodesCase> { };

TEST_P(ImportedCodes, AreThoseOfTheDocument)
{
    EXPECT_EQ(import(project(GetParam().given)).codes, GetParam().expected.size());
    EXPECT_EQ(codes(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Documents, ImportedCodes,
    testing::Values(CodesCase{"without_attributes", "<Code/>", {u"Unnamed Code #8E8E93"_s}},
        CodesCase{"empty_name_stays", "<Code name='' color='blue'/>", {u" #8E8E93"_s}},
        CodesCase{"prefix", "<q:Code name='a'><q:Code name='b'/></q:Code>", {u"a #8E8E93"_s, u"b #8E8E93 <a"_s}},
        CodesCase{"memo_behind_the_children", "<Code name='a'><Code name='b'/><Description>m</Description></Code>",
            {u"a #8E8E93 memo=m"_s, u"b #8E8E93 <a"_s}},
        CodesCase{"first_memo_counts_even_if_blank",
            "<Code name='a'><Description> </Description><Description>m</Description></Code>", {u"a #8E8E93"_s}},
        CodesCase{"memo_of_another_element", "<Code name='a'><NoteRef><Description>m</Description></NoteRef></Code>",
            {u"a #8E8E93"_s}},
        CodesCase{"memo_with_elements_in_it", "<Code name='a'><Description>m<b>n<c>o</c></b>p</Description></Code>",
            {u"a #8E8E93 memo=mnop"_s}},
        CodesCase{"code_in_another_element", "<Set><Code name='a'/></Set><Code name='b'/>", {u"b #8E8E93"_s}},
        CodesCase{"nine_levels",
            [] {
                QByteArray open;
                for (char name = '0'; name <= '8'; ++name)
                    open += QByteArray("<Code name='") + name + "'>";
                return open + QByteArray("</Code>").repeated(9) + "<Code name='z'/>";
            }(),
            {u"0 #8E8E93"_s, u"1 #8E8E93 <0"_s, u"2 #8E8E93 <1"_s, u"3 #8E8E93 <2"_s, u"4 #8E8E93 <3"_s,
                u"5 #8E8E93 <4"_s, u"6 #8E8E93 <5"_s, u"7 #8E8E93 <6"_s, u"z #8E8E93"_s}}),
    rowName);

using CodingsCase = Case<QByteArray, QStringList>;
class ImportedCodings : public QdpxImport, public testing::WithParamInterface<CodingsCase> { };

TEST_P(ImportedCodings, AreThoseThatLieInTheTextAndHaveACode)
{
    const QByteArray codes = "<Code guid='AB' name='one'/><Code guid='cd' name='two'/><Code guid='É' name='three'/>"
                             "<Code guid='Ab' name='last'/><Code name='without'/>";
    EXPECT_EQ(import(project(codes, coded(GetParam().given))), (ImportSummary{5, 1, GetParam().expected.size()}));
    EXPECT_EQ(codings(), GetParam().expected);
}

/// Selections whose start is no number, though parts of it are.
QByteArray noNumbers()
{
    QByteArray selections;
    for (const char *start : {"", " 2", "2 ", "+-2", "+", "abc", "2.0", "0x2", "２", "-9223372036854775809"})
        selections += selection(start, "4", referenceTo("cd")) + selection("-9", start, referenceTo("cd"));
    return selections;
}

INSTANTIATE_TEST_SUITE_P(Documents, ImportedCodings,
    testing::Values(CodingsCase{"other_case", selection("1", "3", referenceTo("CD")), {u"two 1+2"_s}},
        CodingsCase{"other_case_beyond_ascii", selection("1", "3", referenceTo("é")), {u"three 1+2"_s}},
        CodingsCase{"same_identifier_twice", selection("1", "3", referenceTo("aB")), {u"last 1+2"_s}},
        CodingsCase{"empty_identifier", selection("1", "3", referenceTo("")), {}},
        CodingsCase{
            "first_reference_counts", selection("1", "3", "<Coding><CodeRef/><CodeRef targetGUID='cd'/></Coding>"), {}},
        CodingsCase{"reference_in_another_element",
            selection("1", "3", "<Coding><x><CodeRef targetGUID='cd'/></x></Coding>"), {}},
        CodingsCase{"past_the_end", selection("10", "1000", referenceTo("cd")), {u"two 10+20"_s}},
        CodingsCase{"at_the_end", selection("30", "31", referenceTo("cd")), {}},
        CodingsCase{"last_unit", selection("29", "30", referenceTo("cd")), {u"two 29+1"_s}},
        CodingsCase{"backwards", selection("5", "4", referenceTo("cd")), {}},
        CodingsCase{"negative_start_keeps_its_span", selection("-3", "4", referenceTo("cd")), {u"two 0+7"_s}},
        CodingsCase{"signs_and_zeros", selection("+02", "0004", referenceTo("cd")), {u"two 2+2"_s}},
        CodingsCase{"no_numbers", noNumbers(), {}},
        CodingsCase{
            "no_position", "<PlainTextSelection endPosition='4'>" + referenceTo("cd") + "</PlainTextSelection>", {}},
        CodingsCase{"widest_span", selection("-9223372036854775808", "9223372036854775807", referenceTo("cd")),
            {u"two 0+30"_s}},
        CodingsCase{"more_than_64_bits", selection("2", "9223372036854775808", referenceTo("cd")), {}}),
    rowName);

TEST_F(QdpxImport, TakesTheFirstPartOfEachKind)
{
    const QByteArray code = "<Codes><Code guid='a' name='a'/></Codes>";
    const QByteArray wrong = "<Codes><Code guid='a' name='wrong'/></Codes>";
    // Sources may stand before the codes that they refer to.
    EXPECT_EQ(import("<q:Project><x>" + wrong + "</x><Sources>" + coded(selection("0", "1", referenceTo("A")))
                  + "<PDFSource/></Sources><Sources>" + coded({}) + "</Sources><CodeBook><Sets/>" + code + wrong
                  + "</CodeBook><CodeBook>" + wrong + "</CodeBook></q:Project>"),
        (ImportSummary{1, 1, 1}));
    EXPECT_EQ(codings(), QStringList{u"a 0+1"_s});
    EXPECT_EQ(
        import("<Project><CodeBook/><CodeBook>" + code + "</CodeBook><Sources>" + coded({}) + "</Sources></Project>"),
        (ImportSummary{0, 1, 0}));
    EXPECT_EQ(import("<Project/>"), ImportSummary());
}

struct TextCase {
    const char *name;
    QByteArray source; ///< the rest of the start tag, and what is in the element
    QList<std::pair<QByteArray, QByteArray>> members;
    std::optional<QString> expected; ///< absent if the source is passed over
};
class ImportedText : public QdpxImport, public testing::WithParamInterface<TextCase> { };

TEST_P(ImportedText, IsFoundOrTheSourcePassedOver)
{
    TestArchive archive;
    for (const auto &[name, bytes] : GetParam().members)
        archive.add(name, bytes);
    archive.add("project.qde",
        project("<Code guid='a'/>",
            "<TextSource " + GetParam().source + selection("0", "1", referenceTo("a")) + "</TextSource>"
                + coded(selection("0", "2", referenceTo("a")))));
    import(archive);
    QList<std::optional<QString>> texts;
    for (const Document &document : all<Document>())
        texts.append(document.text);
    ASSERT_FALSE(texts.isEmpty());
    EXPECT_EQ(texts.takeLast(), u"x"_s.repeated(30)); // one bad source doesn't stop the next
    EXPECT_EQ(texts.value(0), GetParam().expected);
    EXPECT_EQ(all<Coding>().size(), GetParam().expected ? 2 : 1);
}

INSTANTIATE_TEST_SUITE_P(Sources, ImportedText,
    testing::Values(TextCase{"content_beats_path", "plainTextPath='a.txt'><PlainTextContent>in</PlainTextContent>",
                        {{"a.txt", "out"}}, u"in"_s},
        TextCase{"empty_content_beats_path", "plainTextPath='a.txt'><PlainTextContent/>", {{"a.txt", "out"}}, {}},
        TextCase{"content_in_pieces",
            "><PlainTextContent>a&#13;<b>b</b><![CDATA[<c>]]><!-- x -->\r\nd</PlainTextContent>", {}, u"a\rb<c>\nd"_s},
        TextCase{"internal", "plainTextPath='internal://a.txt'>", {{"sources/a.txt", "1"}, {"a.txt", "2"}}, u"1"_s},
        TextCase{"internal_with_folder", "plainTextPath='internal://sources/a.txt'>", {{"sources/a.txt", "1"}}, u"1"_s},
        TextCase{"internal_with_third_slash", "plainTextPath='internal:///a.txt'>", {{"sources/a.txt", "1"}}, u"1"_s},
        TextCase{"relative_in_the_root", "plainTextPath='relative:///sources/a.txt'>", {{"a.txt", "2"}}, u"2"_s},
        TextCase{"absolute", "plainTextPath='/etc/passwd'>", {{"a.txt", "1"}}, {}},
        TextCase{"upwards", "plainTextPath='internal://../../../../../../../../etc/passwd'>", {{"a.txt", "1"}}, {}},
        TextCase{"trailing_slash", "plainTextPath='x/a.txt/'>", {{"a.txt", "1"}}, u"1"_s},
        TextCase{"other_case", "plainTextPath='internal://A.txt'>", {{"Sources/a.TXT", "1"}}, u"1"_s},
        TextCase{"beyond_ascii", "plainTextPath='internal://研究 é.txt'>", {{"sources/研究 é.txt", "1"}}, u"1"_s},
        TextCase{"escaped", "plainTextPath='internal://a%20%C3%A9.txt'>", {{"sources/a é.txt", "1"}}, u"1"_s},
        TextCase{"literal_before_unescaped", "plainTextPath='internal://a%20b'>",
            {{"sources/a b", "2"}, {"a%20b", "1"}}, u"1"_s},
        TextCase{"escaped_way_upwards", "plainTextPath='internal://..%2F..%2Fproject.qde'>", {}, {}},
        TextCase{"escaped_null", "plainTextPath='internal://a.txt%00b'>", {{"sources/a.txt", "1"}}, {}},
        TextCase{
            "folder_instead", "plainTextPath='internal://a.txt'>", {{"sources/a.txt/b", "1"}, {"a.txt", "2"}}, u"2"_s},
        TextCase{"empty_file", "plainTextPath='a.txt'>", {{"sources/a.txt", ""}, {"a.txt", "2"}}, {}},
        TextCase{"mark_alone", "plainTextPath='a.txt'>", {{"a.txt", "\xEF\xBB\xBF"}}, {}},
        TextCase{"blanks_are_a_text", "plainTextPath='a.txt'>", {{"a.txt", " \r\n"}}, u" \r\n"_s},
        TextCase{"utf8_with_mark", "plainTextPath='a.txt'>", {{"a.txt", "\xEF\xBB\xBFé\r\n"}}, u"é\r\n"_s},
        TextCase{"utf16", "plainTextPath='a.txt'>", {{"a.txt", QByteArray("\xFE\xFF\0a\x4E\x2D", 6)}}, u"a中"_s},
        TextCase{"utf16_with_half_a_pair", "plainTextPath='a.txt'>",
            {{"a.txt", QByteArray("\xFF\xFE\x3D\xD8\x61\0", 6)}}, u"\uFFFDa"_s},
        TextCase{
            "null_character", "plainTextPath='a.txt'>", {{"a.txt", QByteArray("a\0b", 3)}}, u"a"_s + QChar(0) + u'b'}),
    rowName);

struct FailureCase {
    const char *name;
    QByteArray member;
    QByteArray bytes;
    QString message;
};
class FailedImport : public QdpxImport, public testing::WithParamInterface<FailureCase> { };

TEST_P(FailedImport, TellsWhyAndAddsNothing)
{
    EXPECT_EQ(complaint(TestArchive().add(GetParam().member, GetParam().bytes)), GetParam().message);
    EXPECT_TRUE(isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Archives, FailedImport,
    testing::Values(FailureCase{"cut_off", "project.qde", "<Project><CodeBook><Codes><Code name='a'/>",
                        u"Premature end of the document"_s},
        FailureCase{"no_document", "project.xml", "<Project/>",
            u"Not a usable REFI-QDA file: project.qde was not found in the archive"_s},
        FailureCase{"folder_instead_of_document", "project.qde/x", "<Project/>",
            u"Not a usable REFI-QDA file: project.qde was not found in the archive"_s},
        FailureCase{"name_of_a_megabyte", "project.qde",
            "<Project><CodeBook><Codes><Code name='" + QByteArray(1'000'000, 'x') + "'/></Codes></CodeBook></Project>",
            u"Not a usable REFI-QDA file: a name in it is too long"_s},
        FailureCase{"more_codes_than_anybody_has", "project.qde",
            "<Project><CodeBook><Codes>" + QByteArray("<Code/>").repeated(200'001) + "</Codes></CodeBook></Project>",
            u"Not a usable REFI-QDA file: it holds more than a project can hold"_s},
        FailureCase{"wrong_root", "project.qde", "<CodeBook><Codes><Code/></Codes></CodeBook>",
            u"Not a usable REFI-QDA file: the root element is not <Project>"_s}),
    rowName);

TEST_F(QdpxImport, IsUndoneWhenTheDatabaseFailsAtTheLastCoding)
{
    m_queue->write([](Database &database) {
        database.execute("ALTER TABLE coding ADD COLUMN room INTEGER CONSTRAINT no_room CHECK (length < 2)");
    });
    const QByteArray document = project("<Code guid='a'/>",
        coded(selection("0", "1", referenceTo("a")).repeated(2)) + coded(selection("0", "2", referenceTo("a"))));
    EXPECT_TRUE(complaint(TestArchive().add("project.qde", document)).startsWith(u"CHECK constraint failed: no_room"));
    EXPECT_TRUE(isEmpty());
}

TEST_F(QdpxImport, CanBeStoppedAmidCodesPassagesAndALongDocument)
{
    const QByteArray codes = "<Code guid='a'/>" + QByteArray("<Code/>").repeated(2'500);
    const QByteArray document =
        project(codes, coded(selection("0", "1", referenceTo("a")).repeated(2'500) + QByteArray(1'000'000, ' ')));
    AtomicFile::write(m_folder.path(u"study.qdpx"_s), TestArchive().add("project.qde", document).bytes());
    /// Returns how many questions of that name were asked; `last`, from 1, is answered with no. While the archive is
    /// unpacked, their number depends on the time that it takes.
    const auto questions = [&](const QString &name, int last) {
        int count = 0;
        importQdpx(m_folder.path(u"study.qdpx"_s), *m_queue, m_projectID,
            [&](const ImportStep &step) { return step.name != name || ++count != last; });
        return count;
    };
    EXPECT_GT(questions(u"study.qdpx"_s, 0), 15); // pieces of the document, and codes
    const int passages = questions(u"T"_s, 0);
    EXPECT_GE(passages, 3);
    const qsizetype codesBefore = all<Code>().size();
    for (int question = 1; question <= passages; ++question)
        EXPECT_THROW(questions(u"T"_s, question), ImportStopped) << question;
    for (int question = 1; question <= 15; ++question)
        EXPECT_THROW(questions(u"study.qdpx"_s, question), ImportStopped) << question;
    EXPECT_EQ(all<Code>().size(), codesBefore);
}

TEST_F(QdpxImport, ASmallArchiveCannotFillTheLibraryWithOneOfItsFiles)
{
    constexpr int size = 8'000'000; // of which eight fit beside the first
    TestArchive archive;
    archive.add("a.txt", QByteArray(size, 'a'));
    archive.add("project.qde", project("", QByteArray("<TextSource plainTextPath='a.txt'/>").repeated(10)));
    EXPECT_EQ(complaint(archive), u"Not a usable REFI-QDA file: it repeats more text than a project can hold"_s);
    EXPECT_TRUE(isEmpty());
}
