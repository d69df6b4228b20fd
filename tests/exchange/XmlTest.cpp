#include "exchange/XmlReader.h"
#include "exchange/XmlWriter.h"
#include "support/Cases.h"
#include "support/Complaint.h"
#include "support/NastyText.h"
#include "support/Printing.h"

#include <QBuffer>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

/// Notes what a document holds, as "<name a=value>text</>".
class Notes : public XmlHandler {
public:
    void startElement(QByteArrayView name, const XmlAttributes &attributes) override
    {
        text.append('<').append(name);
        if (const auto value = attributes.value("a"))
            text.append(" a=").append(*value);
        text.append('>');
    }
    void endElement() override { text.append("</>"); }
    void characters(QByteArrayView piece) override { text.append(piece); }

    QByteArray text;
};

void read(QByteArray document, XmlHandler &handler)
{
    QBuffer device(&document);
    device.open(QIODevice::ReadOnly);
    XmlReader::read(device, handler);
}

QByteArray notesOn(const QByteArray &document)
{
    Notes notes;
    read(document, notes);
    return notes.text;
}

/// What the document is refused with, or "" if it isn't.
QString refusal(const QByteArray &document)
{
    return complaintAbout([&] { notesOn(document); });
}

} // namespace

TEST(Xml, ComesBackAsItWasWritten)
{
    NastyText nasty(20240531);
    for (int round = 0; round < 300; ++round) {
        QString value = nasty.next(nasty.number(0, 30));
        if (nasty.onceIn(10)) // pairs lie across every border that writer and reader have
            value += u"x"_s.repeated(nasty.number(0, 3)) + u"\U0001F600\r\n中"_s.repeated(nasty.number(1, 30'000));
        for (const int unit : {0x03, 0x09, 0x0A, 0x0D, 0x22, 0x26, 0x3C, 0xD83D, 0xDE00, 0xFFFE})
            value.insert(nasty.number(0, int(value.size())), QChar(unit));
        QString expected;
        for (qsizetype index = 0; index < value.size(); ++index) {
            const QChar unit = value[index];
            if (unit.isHighSurrogate() && index + 1 < value.size() && value[index + 1].isLowSurrogate())
                expected.append(unit).append(value[++index]);
            else if (unit.isSurrogate() || unit >= QChar(0xFFFE) || (unit < u' ' && !u"\t\n\r"_s.contains(unit)))
                expected.append(QChar::ReplacementCharacter);
            else
                expected.append(unit);
        }
        XmlWriter xml;
        xml.startElement("e");
        xml.attribute("a", QStringView(value).first(std::min<qsizetype>(value.size(), 40'000)));
        xml.text(value);
        xml.endElement();
        const QByteArray notes = notesOn(xml.takeDocument());
        const QByteArray text = expected.toUtf8();
        ASSERT_TRUE(notes.endsWith('>' + text + "</>")) << "round " << round;
        ASSERT_TRUE(value.size() > 40'000 || notes == "<e a=" + text + '>' + text + "</>") << "round " << round;
    }
}

using ReadingCase = Case<QByteArray>;
using XmlReading = testing::TestWithParam<ReadingCase>;

TEST_P(XmlReading, FindsWhatTheDocumentHolds)
{
    EXPECT_EQ(notesOn(GetParam().given), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Documents, XmlReading,
    testing::Values(ReadingCase{"prefix", "<q:e xmlns:q='u' a='1'><q:f/></q:e>", "<e a=1><f></></>"},
        ReadingCase{"prefix_never_declared", "<q:e a='1'><q:f/></q:e>", "<e a=1><f></></>"},
        ReadingCase{"attribute_with_a_prefix_beside_it", "<e q:a='1' a='2'/>", "<e a=2></>"},
        ReadingCase{"empty_attribute", "<e a=''/>", "<e a=></>"},
        ReadingCase{"definition_elsewhere", "<!DOCTYPE e SYSTEM 'file:///etc/passwd'><e/>", "<e></>"}),
    rowName);

namespace {

QByteArray billionLaughs()
{
    QByteArray declarations = "<!ENTITY l0 'ha'>";
    for (int level = 1; level < 12; ++level)
        declarations += "<!ENTITY l" + QByteArray::number(level) + " '"
            + QByteArray("&l" + QByteArray::number(level - 1) + ';').repeated(10) + "'>";
    return "<!DOCTYPE e [" + declarations + "]>";
}

} // namespace

using RefusalCase = Case<QByteArray, QString>; // the message begins so
using XmlRefusal = testing::TestWithParam<RefusalCase>;

TEST_P(XmlRefusal, SaysWhatIsWrongAndPrintsNothing)
{
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    const QString message = refusal(GetParam().given);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_TRUE(message.startsWith(GetParam().expected)) << message.toStdString();
    EXPECT_EQ(message, message.trimmed());
}

INSTANTIATE_TEST_SUITE_P(Documents, XmlRefusal,
    testing::Values(RefusalCase{"cut_off", "<e><f>", u"Premature end of the document"_s},
        RefusalCase{"declared_entity", "<!DOCTYPE e [<!ENTITY x 'y'>]><e>&x;</e>", u"Entity 'x' not defined"_s},
        RefusalCase{"file_as_an_entity", "<!DOCTYPE e [<!ENTITY x SYSTEM 'file:///etc/passwd'>]><e>&x;</e>",
            u"Entity 'x' not defined"_s},
        RefusalCase{"entity_that_a_definition_elsewhere_may_have", "<!DOCTYPE e SYSTEM 'x'><e>1&x;2</e>",
            u"Entity 'x' not defined"_s},
        RefusalCase{"entity_of_the_definition", "<!DOCTYPE e [<!ENTITY % x SYSTEM 'file:///etc/passwd'> %x;]><e/>",
            u"PEReference: %x; not found"_s},
        RefusalCase{"billion_laughs", billionLaughs() + "<e>&l11;</e>", u"Entity 'l11' not defined"_s},
        RefusalCase{
            "billion_laughs_in_an_attribute", billionLaughs() + "<e a='&l11;'/>", u"Entity 'l11' not defined"_s}),
    rowName);

namespace {

QByteArray numbered(int count, const char *before, const char *behind)
{
    QByteArray result;
    for (int number = 0; number < count; ++number)
        result += before + QByteArray::number(number) + behind;
    return result;
}

} // namespace

/// Documents that are made only when their turn comes.
struct HugeCase {
    const char *name;
    QByteArray (*document)();
    QString message; ///< of the refusal
    QByteArray (*expected)() = nullptr; ///< otherwise
};
using HugeXml = testing::TestWithParam<HugeCase>;

TEST_P(HugeXml, IsReadOrRefusedInGoodTime)
{
    const QByteArray document = GetParam().document();
    EXPECT_EQ(refusal(document), GetParam().message);
    if (GetParam().expected) {
        EXPECT_TRUE(notesOn(document) == GetParam().expected());
    }
}

INSTANTIATE_TEST_SUITE_P(Documents, HugeXml,
    testing::Values(HugeCase{"text", [] { return "<e>" + QByteArray(12'000'000, 'x') + "</e>"; }, {},
                        [] { return "<e>" + QByteArray(12'000'000, 'x') + "</>"; }},
        HugeCase{"section", [] { return "<e><![CDATA[" + QByteArray(9'000'000, 'x') + "]]></e>"; }, {},
            [] { return "<e>" + QByteArray(9'000'000, 'x') + "</>"; }},
        HugeCase{"levels", [] { return QByteArray("<e>").repeated(100'000) + QByteArray("</e>").repeated(100'000); },
            {}, [] { return QByteArray("<e>").repeated(100'000) + QByteArray("</>").repeated(100'000); }},
        HugeCase{"namespaces_side_by_side",
            [] { return "<e>" + QByteArray("<e xmlns:q='u' xmlns='v'/>").repeated(1'000) + "</e>"; }, {},
            [] { return "<e>" + QByteArray("<e></>").repeated(1'000) + "</>"; }},
        HugeCase{"attribute", [] { return "<e a='" + QByteArray(8'000'000, 'x') + "'/>"; }, u"A tag is too long"_s},
        HugeCase{"attributes_in_a_tag", [] { return "<e" + numbered(30'000, " a", "=''") + "/>"; },
            u"A tag has too many attributes"_s},
        HugeCase{"default_attributes",
            [] { return "<!DOCTYPE e [<!ATTLIST e" + numbered(20'000, " a", " CDATA ''") + ">]><e/>"; },
            u"A tag has too many attributes"_s},
        HugeCase{"namespaces_in_scope", [] { return "<e>" + numbered(10'000, "<e xmlns:n", "='u'>"); },
            u"Too many namespaces are declared"_s}),
    rowName);

TEST(XmlReader, PassesOnWhatTheHandlerThrows)
{
    struct Impatient : Notes {
        void endElement() override { throw std::runtime_error("enough"); }
    };
    Impatient handler;
    EXPECT_THROW(read("<e><f/><g/>", handler), std::runtime_error);
    EXPECT_EQ(handler.text, "<e><f>"); // nothing is told afterwards
}
