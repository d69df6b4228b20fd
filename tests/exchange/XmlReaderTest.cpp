#include "exchange/XmlReader.h"
#include "support/Complaint.h"

#include <QBuffer>

#include <gtest/gtest.h>

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

QByteArray numbered(int count, const char *before, const char *after)
{
    QByteArray result;
    for (int number = 0; number < count; ++number)
        result += before + QByteArray::number(number) + after;
    return result;
}

} // namespace

TEST(XmlReader, ReadsWhatIsUnusualOrMerelyLarge)
{
    const QByteArray large(9'000'000, 'x');
    const QList<std::pair<QByteArray, QByteArray>> documents{
        {"<q:e xmlns:q='u' a='1'><q:f/></q:e>", "<e a=1><f></></>"}, {"<q:e a='1'><q:f/></q:e>", "<e a=1><f></></>"},
        {"<e q:a='1' a='2'/>", "<e a=2></>"}, {"<e a=''/>", "<e a=></>"},
        {"<!DOCTYPE e SYSTEM 'file:///etc/passwd'><e/>", "<e></>"}, {"<e/><!-- x --> ", "<e></>"},
        {"<e>" + large + "</e>", "<e>" + large + "</>"}, {"<e><![CDATA[" + large + "]]></e>", "<e>" + large + "</>"},
        {QByteArray("<e>").repeated(100'000) + QByteArray("</e>").repeated(100'000),
            QByteArray("<e>").repeated(100'000) + QByteArray("</>").repeated(100'000)},
        {"<e" + numbered(256, " a", "=''") + "/>", "<e></>"},
        {"<e>" + QByteArray("<e xmlns:q='u' xmlns='v'/>").repeated(1'000) + "</e>",
            "<e>" + QByteArray("<e></>").repeated(1'000) + "</>"},
        {"<e>" + numbered(256, "<e xmlns:n", "='u'>") + QByteArray("</e>").repeated(257),
            QByteArray("<e>").repeated(257) + QByteArray("</>").repeated(257)}};
    for (const auto &[document, expected] : documents) {
        Notes notes;
        EXPECT_EQ(complaintAbout([&] { read(document, notes); }), QString());
        EXPECT_TRUE(notes.text == expected) << document.first(40).constData();
    }
}

TEST(XmlReader, SaysWhatIsWrongAndPrintsNothing)
{
    const QList<std::pair<QByteArray, QString>> documents{{"", u"Premature end of the document"_s},
        {"<e><f>", u"Premature end of the document"_s}, {"<e/><e/>", u"Extra content at the end of the document"_s},
        {"<e><f></f></e>x", u"Extra content at the end of the document"_s},
        {"<!DOCTYPE e [<!ENTITY x 'y'>]><e>&x;</e>", u"Entity 'x' not defined"_s},
        {"<!DOCTYPE e [<!ENTITY x SYSTEM 'file:///etc/passwd'>]><e>&x;</e>", u"Entity 'x' not defined"_s},
        {"<!DOCTYPE e [<!ENTITY % x SYSTEM 'file:///etc/passwd'> %x;]><e/>", u"PEReference: %x; not found"_s},
        {"<e a='" + QByteArray(8'000'000, 'x') + "'/>", u"A tag is too long"_s},
        {"<e" + numbered(257, " a", "=''") + "/>", u"A tag has too many attributes"_s},
        {"<!DOCTYPE e [<!ATTLIST e" + numbered(20'000, " a", " CDATA ''") + ">]><e/>",
            u"A tag has too many attributes"_s},
        {"<e>" + numbered(257, "<e xmlns:n", "='u'>"), u"Too many namespaces are declared"_s}};
    for (const auto &[document, message] : documents) {
        testing::internal::CaptureStderr();
        testing::internal::CaptureStdout();
        Notes notes;
        const QString complaint = complaintAbout([&] { read(document, notes); });
        EXPECT_EQ(testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr(), "");
        EXPECT_TRUE(complaint.startsWith(message)) << complaint.toStdString();
        EXPECT_EQ(complaint, complaint.trimmed());
    }
}
