#include "exchange/RefiQdpxImport.h"
#include "exchange/RefiQdpx.h"
#include "exchange/RefiQdpxExport.h"
#include "platform/UnpairedSurrogates.h"
#include "records/AppDatabase.h"
#include "records/TextTrimming.h"
#include "records/database/Request.h"
#include "support/Complaint.h"
#include "support/NastyText.h"
#include "support/TestArchive.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace RefiQdpx;

namespace {

QStringList sorted(QStringList lines)
{
    lines.sort();
    return lines;
}

/// What an archive keeps of a name or memo: what XML can't express becomes U+FFFD.
QString expressible(QString text)
{
    text = replaceUnpairedSurrogates(text);
    for (QChar &unit : text)
        if ((unit < u' ' && !u"\t\n\r"_s.contains(unit)) || unit >= QChar(0xFFFE))
            unit = QChar::ReplacementCharacter;
    return text;
}

/// One line per record, with names in place of identifiers, as an archive keeps them: "code /parent/name #colour memo",
/// "document title: text memo", "passage title/parent/name start+length". Sorted; the project itself isn't among them.
QStringList linesOf(const ExportInput &content)
{
    const auto memo = [](const auto &record) { return record.memo ? u' ' + expressible(*record.memo) : QString(); };
    QHash<QUuid, QString> names;
    QStringList lines;
    for (const Code &code : content.codes) { // parents come first
        names[code.id] = (code.parentID ? names.value(*code.parentID) : QString()) + u'/' + expressible(code.name);
        lines.append(u"code "_s + names[code.id] + u' ' + code.colorHex + memo(code));
    }
    for (const Document &document : content.documents) {
        names[document.id] = expressible(document.title);
        lines.append(
            u"document "_s + names[document.id] + u": "_s + replaceUnpairedSurrogates(document.text) + memo(document));
    }
    for (const Coding &coding : content.codings)
        lines.append(u"passage "_s + names.value(coding.documentID) + names.value(coding.codeID) + u' '
            + QString::number(coding.start) + u'+' + QString::number(coding.length));
    return sorted(lines);
}

/// A project of its own database, and what archives bring into it. Afterwards no file may be left anywhere.
class QdpxImport : public testing::Test, protected OwnTemporaryFolder {
protected:
    ~QdpxImport() override { EXPECT_FALSE(hasLeftovers()); }

    ImportSummary import(const TestArchive &archive) const
    {
        return importQdpx(write(u"study.qdpx"_s, archive.bytes()), *m_queue, m_projectID);
    }
    ImportSummary import(const QByteArray &xml) const { return import(TestArchive().add("project.qde", xml)); }
    [[nodiscard]] ExportInput content() const
    {
        return m_queue->read([](Database &database) -> ExportInput {
            return {{}, Document::all().fetchAll(database), Code::all().fetchAll(database),
                Coding::all().fetchAll(database)};
        });
    }
    /// The lines that begin so, without the beginning.
    [[nodiscard]] QStringList lines(const QString &beginning) const
    {
        QStringList lines;
        for (const QString &line : linesOf(content()))
            if (line.startsWith(beginning))
                lines.append(line.sliced(beginning.size()));
        return lines;
    }

    std::unique_ptr<DatabaseQueue> m_queue = AppDatabase::makeFreshQueue();
    QUuid m_projectID = QUuid::createUuid();
};

QByteArray project(const QByteArray &codes, const QByteArray &sources = {})
{
    return "<Project><CodeBook><Codes>" + codes + "</Codes></CodeBook><Sources>" + sources + "</Sources></Project>";
}

/// A source with its text inside, thirty units long.
QByteArray source(const QByteArray &selections)
{
    return "<TextSource name='T'><PlainTextContent>" + QByteArray(30, 'x') + "</PlainTextContent>" + selections
        + "</TextSource>";
}

QByteArray selection(const QByteArray &start, const QByteArray &end, const QByteArray &content)
{
    return "<PlainTextSelection startPosition='" + start + "' endPosition='" + end + "'>" + content
        + "</PlainTextSelection>";
}

/// A coded selection.
QByteArray passage(const QByteArray &start, const QByteArray &end, const QByteArray &guid = "a")
{
    return selection(start, end, "<Coding><CodeRef targetGUID='" + guid + "'/></Coding>");
}

} // namespace

TEST_F(QdpxImport, MakesNewRecordsOfTheFirstPartOfEachKind)
{
    const QDateTime before = QDateTime::currentDateTimeUtc().addMSecs(-1);
    const QByteArray talk =
        "<TextSource name='Talk'><Description> m </Description><PlainTextContent>It's \U0001F600</PlainTextContent>"
        + passage("1", "4") + "</TextSource>";
    const QByteArray codes = "<Codes><Code guid='A' name='Trust' color='12ab3f'/></Codes>";
    const QByteArray wrong = "<Codes><Code guid='A' name='wrong'/></Codes>";
    const QByteArray document = "<q:Project><x>" + wrong + "</x><Sources>" + talk + "<PDFSource/></Sources><Sources>"
        + source({}) + "</Sources><CodeBook><Sets/>" + codes + wrong + "</CodeBook><CodeBook>" + wrong
        + "</CodeBook></q:Project>";
    EXPECT_EQ(import("<Project><CodeBook/><CodeBook>" + codes + "</CodeBook></Project>"), ImportSummary());
    EXPECT_EQ(import(document), (ImportSummary{1, 1, 1}));
    EXPECT_EQ(import(document), (ImportSummary{1, 1, 1})); // twice makes everything twice
    const ExportInput made = content();
    EXPECT_EQ(linesOf(made),
        QStringList(2, u"code /Trust #12AB3F"_s) + QStringList(2, u"document Talk: It's \U0001F600 m"_s)
            + QStringList(2, u"passage Talk/Trust 1+3"_s));
    const Document &second = made.documents[1];
    EXPECT_TRUE(second.sourceKind == u"qdpx" && second.wordCount == 2 && second.charCount == 6);
    EXPECT_TRUE(second.projectID == m_projectID && made.codes[1].projectID == m_projectID);
    const QDateTime after = QDateTime::currentDateTimeUtc();
    for (const QDateTime &moment : {second.addedAt, made.codes[1].createdAt, made.codings[1].createdAt})
        EXPECT_TRUE(moment >= before && moment <= after);
}

TEST_F(QdpxImport, TakesTheCodesOfTheDocument)
{
    const std::pair<QByteArray, QStringList> rows[]{{"<Code/>", {u"Unnamed Code #8E8E93"_s}},
        {"<Code name='' color='blue'/>", {u" #8E8E93"_s}},
        {"<q:Code name='a'><q:Code name='b'/></q:Code>", {u"a #8E8E93"_s, u"a/b #8E8E93"_s}},
        {"<Code name='c'><Code name='d'/><Description>m</Description></Code>", {u"c #8E8E93 m"_s, u"c/d #8E8E93"_s}},
        {"<Code name='e'><Description> </Description><Description>m</Description></Code>", {u"e #8E8E93"_s}},
        {"<Code name='f'><NoteRef><Description>m</Description></NoteRef></Code>", {u"f #8E8E93"_s}},
        {"<Code name='g'><Description>m<b>n<c>o</c></b>p</Description></Code>", {u"g #8E8E93 mnop"_s}},
        {"<Set><Code name='a'/></Set><Code name='h'/>", {u"h #8E8E93"_s}},
        {QByteArray("<Code name='i'>").repeated(9) + QByteArray("</Code>").repeated(9),
            {u"i #8E8E93"_s, u"i/i #8E8E93"_s, u"i/i/i #8E8E93"_s, u"i/i/i/i #8E8E93"_s, u"i/i/i/i/i #8E8E93"_s,
                u"i/i/i/i/i/i #8E8E93"_s, u"i/i/i/i/i/i/i #8E8E93"_s, u"i/i/i/i/i/i/i/i #8E8E93"_s}}};
    QByteArray codes;
    QStringList expected;
    for (const auto &[code, lines] : rows) {
        codes += code;
        expected += lines;
    }
    EXPECT_EQ(import(project(codes)).codes, expected.size());
    EXPECT_EQ(lines(u"code /"_s), sorted(expected));
}

TEST_F(QdpxImport, TakesThePassagesThatLieInTheTextAndHaveACode)
{
    const QByteArray codes = "<Code guid='AB' name='wrong'/><Code guid='a' name='a'/><Code guid='É' name='é'/>"
                             "<Code guid='Ab' name='last'/><Code name='without'/>";
    const std::pair<QByteArray, QString> rows[]{{passage("1", "3", "A"), u"a 1+2"_s},
        {passage("1", "3", "é"), u"é 1+2"_s}, {passage("1", "3", "aB"), u"last 1+2"_s}, {passage("1", "3", ""), {}},
        {selection("1", "4", "<Coding><CodeRef/><CodeRef targetGUID='a'/></Coding>"), {}},
        {selection("1", "5", "<Coding><x><CodeRef targetGUID='a'/></x></Coding>"), {}},
        {passage("10", "1000"), u"a 10+20"_s}, {passage("30", "31"), {}}, {passage("29", "30"), u"a 29+1"_s},
        {passage("5", "4") + passage("5", "5"), {}}, {passage("-3", "4"), u"a 0+7"_s}, // keeps its length
        {passage("+02", "0004"), u"a 2+2"_s}, {passage("-9223372036854775808", "9223372036854775807"), u"a 0+30"_s},
        {passage("2", "9223372036854775808"), {}},
        {"<PlainTextSelection endPosition='4'><Coding><CodeRef targetGUID='a'/></Coding></PlainTextSelection>", {}}};
    QByteArray passages;
    QStringList expected;
    for (const auto &[selection, line] : rows) {
        passages += selection;
        if (!line.isNull())
            expected.append(line);
    }
    for (const char *number : {"", " 2", "2 ", "+-2", "+", "abc", "2.0", "0x2", "２", "-9223372036854775809"})
        passages += passage(number, "4") + passage("-9", number);
    EXPECT_EQ(import(project(codes, source(passages))), (ImportSummary{5, 1, expected.size()}));
    EXPECT_EQ(lines(u"passage T/"_s), sorted(expected));
}

TEST_F(QdpxImport, FindsTheTextOrPassesOverTheSource)
{
    TestArchive archive;
    archive.add("sources/a.txt", "1").add("a.txt", "2").add("b.txt", "3").add("sources/研究 é.txt", "4");
    archive.add("sources/a b", "5").add("a%20b", "6").add("sources/f.txt/b", "7").add("f.txt", "8");
    archive.add("sources/empty.txt", "").add("empty.txt", "9").add("mark.txt", "\xEF\xBB\xBF");
    archive.add("blank.txt", " \r\n").add("latin1.txt", "\xD0\xC5").add("utf16.txt", QByteArray("\xFE\xFF\0a", 4));
    const std::pair<QByteArray, QString> rows[]{
        // the rest of the start tag and what is in the element; the text, null if the source is passed over
        {"plainTextPath='a.txt'><PlainTextContent>in</PlainTextContent>", u"in"_s},
        {"plainTextPath='a.txt'><PlainTextContent/>", {}},
        {"><PlainTextContent>a&#13;<b>b</b><![CDATA[<c>]]><!-- x -->\r\nd</PlainTextContent>", u"a\rb<c>\nd"_s},
        {"plainTextPath='internal://a.txt'>", u"1"_s}, {"plainTextPath='internal://sources/a.txt'>", u"1"_s},
        {"plainTextPath='internal:///a.txt'>", u"1"_s}, {"plainTextPath='relative:///sources/b.txt'>", u"3"_s},
        {"plainTextPath='/etc/passwd'>", {}}, {"plainTextPath='internal://../../../../../../../../etc/passwd'>", {}},
        {"plainTextPath='x/b.txt/'>", u"3"_s}, {"plainTextPath='internal://研究 é.txt'>", u"4"_s},
        {"plainTextPath='internal://%E7%A0%94究%20%C3%A9.txt'>", u"4"_s},
        {"plainTextPath='internal://a%20b'>", u"6"_s}, // literal before unescaped
        {"plainTextPath='internal://..%2F..%2Fproject.qde'>", {}},
        {"plainTextPath='internal://f.txt'>", u"8"_s}, // the other is a folder
        {"plainTextPath='empty.txt'>", {}}, {"plainTextPath='mark.txt'>", {}},
        {"plainTextPath='blank.txt'>", u" \r\n"_s}, {"plainTextPath='latin1.txt'>", u"ÐÅ"_s},
        {"plainTextPath='utf16.txt'>", u"a"_s}, {"plainTextPath='none.txt'>", {}}, {">", {}}};
    QByteArray sources;
    QStringList expected;
    for (const auto &[source, text] : rows) {
        const QByteArray title = QByteArray::number(sources.size());
        sources += "<TextSource name='" + title + "' " + source + passage("0", "1") + "</TextSource>";
        if (!text.isNull())
            expected.append(QString::fromLatin1(title) + u": "_s + text);
    }
    const ImportSummary summary = import(archive.add("project.qde", project("<Code guid='a'/>", sources)));
    EXPECT_EQ(lines(u"document "_s), sorted(expected));
    EXPECT_EQ(summary, (ImportSummary{1, expected.size(), expected.size()}));
}

TEST_F(QdpxImport, TellsWhyItFailsAndAddsNothing)
{
    const auto complaint = [&](const TestArchive &archive) { return complaintAbout([&] { import(archive); }); };
    const QString notUsable = u"Not a usable REFI-QDA file: "_s;
    const QString notFound = notUsable + u"project.qde was not found in the archive"_s;
    const std::tuple<QByteArray, QByteArray, QString> rows[]{
        {"project.qde", "<Project><CodeBook><Codes><Code name='a'/>", u"Premature end of the document"_s},
        {"project.xml", "<Project/>", notFound}, {"project.qde/x", "<Project/>", notFound},
        {"project.qde", "<CodeBook><Codes/></CodeBook>", notUsable + u"the root element is not <Project>"_s},
        {"project.qde", project("<Code name='" + QByteArray(maxNameLength + 1, 'x') + "'/>"),
            notUsable + u"a name in it is too long"_s},
        {"project.qde", project(QByteArray("<Code/>").repeated(200'001)),
            notUsable + u"it holds more than a project can hold"_s}};
    for (const auto &[member, bytes, message] : rows)
        EXPECT_EQ(complaint(TestArchive().add(member, bytes)), message);
    TestArchive repeated; // eight times fit beside the first, nine don't
    repeated.add("a.txt", QByteArray(8'000'000, 'a'));
    repeated.add("project.qde", project("", QByteArray("<TextSource plainTextPath='a.txt'/>").repeated(10)));
    EXPECT_EQ(complaint(repeated), notUsable + u"it repeats more text than a project can hold"_s);

    m_queue->write([](Database &database) {
        database.execute("ALTER TABLE coding ADD COLUMN room INTEGER CONSTRAINT no_room CHECK (length < 2)");
    });
    const QByteArray tooLong = source(passage("0", "1").repeated(2)) + source(passage("0", "2"));
    EXPECT_TRUE(complaint(TestArchive().add("project.qde", project("<Code guid='a'/>", tooLong)))
                    .startsWith(u"CHECK constraint failed: no_room"));
    EXPECT_EQ(linesOf(content()), QStringList());
}

TEST_F(QdpxImport, CanBeStoppedAtAnyQuestion)
{
    const QByteArray passages = passage("0", "1").repeated(2'500) + QByteArray(1'000'000, ' ');
    const QByteArray document = project("<Code guid='a'/>" + QByteArray("<Code/>").repeated(2'500), source(passages));
    const QString archive = write(u"study.qdpx"_s, TestArchive().add("project.qde", document).bytes());
    // For each piece of the document, each thousand records, the one source, and once more. While the archive is
    // unpacked, how often is asked depends on the time that it takes.
    const qsizetype questions = document.size() / (1 << 16) + 5 + 1 + 1;
    for (qsizetype last = 1; last <= questions; ++last) {
        qsizetype asked = 0;
        const auto mayImport = [&](const ImportStep &step) { return step.number != 1 || ++asked != last; };
        EXPECT_THROW(importQdpx(archive, *m_queue, m_projectID, mayImport), ImportStopped) << last;
        EXPECT_EQ(content().codes.size(), 0);
    }
}

namespace {

/// A text with everything that is hard to write as XML.
QString hardText(NastyText &nasty, int pieces)
{
    QString text = nasty.next(pieces);
    if (nasty.onceIn(50)) // pairs lie across every boundary that the writer and the reader have
        text += u"x"_s.repeated(nasty.number(0, 3)) + u"\U0001F600\r\n中"_s.repeated(30'000);
    for (const int unit : {0x03, 0x09, 0x0A, 0x0D, 0x22, 0x26, 0x3C, 0x0FFF, 0xD83D, 0xDE00, 0xFFFE, 0xFFFF})
        if (nasty.onceIn(4))
            text.insert(nasty.number(0, int(text.size())), QChar(unit));
    return text;
}

ExportInput randomProject(unsigned seed)
{
    NastyText nasty(seed);
    const auto memo = [&] { return nasty.onceIn(2) ? std::optional(u'm' + hardText(nasty, 8) + u'm') : std::nullopt; };
    ExportInput input;
    for (int number = nasty.number(1, 30); number > 0; --number) {
        Code code;
        code.id = QUuid::createUuid();
        code.name = nasty.onceIn(100) ? QString(maxNameLength, u'"') : hardText(nasty, 4);
        code.colorHex = u"#12AB3F"_s;
        code.memo = memo();
        if (const qsizetype level = input.codes.size() % 8; level > 0) // eight levels at most
            code.parentID = input.codes[input.codes.size() - nasty.number(1, int(level))].id;
        input.codes.append(code);
    }
    for (int number = nasty.number(0, 6); number > 0; --number) {
        Document document;
        document.id = QUuid::createUuid();
        document.title = QString::number(number) + hardText(nasty, 5);
        document.text = (nasty.onceIn(5) ? u'\uFEFF' : u't') + hardText(nasty, nasty.number(0, 60));
        document.memo = memo();
        input.documents.append(document);
        for (int coded = nasty.number(0, 20); coded > 0; --coded) {
            const Code &code = input.codes[nasty.number(0, int(input.codes.size()) - 1)];
            const int start = nasty.number(0, int(document.text.size()) - 1);
            input.codings.append({{}, QUuid::createUuid(), document.id, code.id, start,
                nasty.number(1, int(document.text.size()) - start), QDateTime::currentDateTimeUtc()});
        }
    }
    return input;
}

} // namespace

TEST_F(QdpxImport, TakesWhatTheExportWrote)
{
    for (unsigned seed = 1; seed <= 25; ++seed) {
        SCOPED_TRACE(seed);
        const ExportInput input = randomProject(seed);
        exportArchive(input, path(u"study.qdpx"_s));
        m_queue = AppDatabase::makeFreshQueue();
        const ImportSummary summary = importQdpx(path(u"study.qdpx"_s), *m_queue, m_projectID);
        const ExportInput made = content();
        EXPECT_EQ(linesOf(made), linesOf(input));
        EXPECT_EQ(summary, (ImportSummary{made.codes.size(), made.documents.size(), made.codings.size()}));
    }
}
