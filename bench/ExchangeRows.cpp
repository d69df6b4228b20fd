#include "Row.h"

#include "exchange/RefiQdpx.h"
#include "exchange/RefiQdpxDocument.h"
#include "exchange/RefiQdpxExport.h"
#include "exchange/RtfText.h"
#include "exchange/WordText.h"
#include "support/PlainWordText.h"

#include <QBuffer>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

using namespace Qt::StringLiterals;

namespace {

/// A Word part of about 26 MB: short runs, as Word writes them, and many paragraphs.
QString wordPart()
{
    QString xml = u"<w:document><w:body>"_s;
    for (int paragraph = 0; xml.size() < 26'000'000; ++paragraph) {
        xml += u"<w:p w:rsidR=\"00A77B3E\"><w:pPr><w:jc w:val=\"both\"/></w:pPr>"_s;
        for (int run = 0; run < 6; ++run)
            xml += u"<w:r><w:rPr><w:b/><w:lang w:val=\"en-GB\"/></w:rPr><w:t xml:space=\"preserve\">some words of "
                   "text &amp; more </w:t></w:r>"_s;
        xml += u"<w:tab/></w:p>"_s;
    }
    return xml + u"</w:body></w:document>"_s;
}

QByteArray richText()
{
    QByteArray rtf = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fcharset0 Arial;}}\n";
    while (rtf.size() < 100'000'000)
        rtf +=
            "\\pard\\plain \\f0\\fs22\\lang2057 Some words of plain text, and \\b bold\\b0  ones; na\\'efve caf\\'e9 "
            "\\u8220?quoted\\u8221? and so on for a line or two of an interview.\\par\r\n";
    return rtf + '}';
}

RefiQdpx::ExportInput exchangeInput(int selections)
{
    RefiQdpx::ExportInput input;
    const QDateTime now = QDateTime::currentDateTimeUtc();
    input.project.id = QUuid::createUuid();
    input.project.name = u"Large"_s;
    input.project.createdAt = input.project.modifiedAt = now;
    for (int index = 0; index < 500; ++index) {
        Code code;
        code.id = QUuid::createUuid();
        code.name = u"Code %1"_s.arg(index);
        code.colorHex = u"#5E5CE6"_s;
        code.createdAt = now;
        input.codes.append(code);
    }
    for (int index = 0; index < 1000; ++index) {
        Document document;
        document.id = QUuid::createUuid();
        document.title = u"Interview %1"_s.arg(index);
        document.text = u"Some words that somebody said, & more. "_s.repeated(500);
        document.addedAt = now;
        input.documents.append(document);
    }
    for (int index = 0; index < selections; ++index) {
        Coding coding;
        coding.id = QUuid::createUuid();
        coding.documentID = input.documents.at(index % 1000).id;
        coding.codeID = input.codes.at(index % 500).id;
        coding.start = index % 15'000;
        coding.length = 100 + index % 100;
        coding.createdAt = now;
        input.codings.append(coding);
    }
    return input;
}

/// The same selections through Qt's writer.
QByteArray plainlyWritten(const RefiQdpx::ExportInput &input)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    writer.setAutoFormatting(true);
    writer.writeStartDocument();
    writer.writeStartElement(u"Sources"_s);
    QHash<QUuid, QList<Coding>> codings;
    for (const Coding &coding : input.codings)
        codings[coding.documentID].append(coding);
    for (const Document &document : input.documents) {
        writer.writeStartElement(u"TextSource"_s);
        writer.writeAttribute(u"guid"_s, document.id.toString(QUuid::WithoutBraces).toUpper());
        for (const Coding &coding : codings.value(document.id)) {
            const QString moment = coding.createdAt.toString(Qt::ISODate);
            writer.writeStartElement(u"PlainTextSelection"_s);
            writer.writeAttribute(u"guid"_s, QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper());
            writer.writeAttribute(u"name"_s, document.text.mid(coding.start, 120));
            writer.writeAttribute(u"startPosition"_s, QString::number(coding.start));
            writer.writeAttribute(u"endPosition"_s, QString::number(coding.start + coding.length));
            for (const QString &name : {u"creatingUser"_s, u"modifyingUser"_s})
                writer.writeAttribute(name, document.id.toString(QUuid::WithoutBraces).toUpper());
            for (const QString &name : {u"creationDateTime"_s, u"modifiedDateTime"_s})
                writer.writeAttribute(name, moment);
            writer.writeStartElement(u"Coding"_s);
            writer.writeAttribute(u"guid"_s, coding.id.toString(QUuid::WithoutBraces).toUpper());
            writer.writeAttribute(u"creatingUser"_s, document.id.toString(QUuid::WithoutBraces).toUpper());
            writer.writeAttribute(u"creationDateTime"_s, moment);
            writer.writeEmptyElement(u"CodeRef"_s);
            writer.writeAttribute(u"targetGUID"_s, coding.codeID.toString(QUuid::WithoutBraces).toUpper());
            writer.writeEndElement();
            writer.writeEndElement();
        }
        writer.writeEndElement();
    }
    writer.writeEndDocument();
    return bytes;
}

/// The same selections through Qt's reader.
qsizetype plainlyRead(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    QList<std::pair<TextRange, QString>> found;
    TextRange range;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = reader.attributes();
        if (reader.name() == u"PlainTextSelection") {
            range.location = attributes.value(u"startPosition"_s).toLongLong();
            range.length = attributes.value(u"endPosition"_s).toLongLong() - range.location;
        } else if (reader.name() == u"CodeRef") {
            found.append({range, attributes.value(u"targetGUID"_s).toString().toLower()});
        }
    }
    return found.size();
}

/// Control words taken out by a regular expression: not nearly a reader, and still slower than one.
qsizetype plainlyStripped(const QByteArray &rtf)
{
    static const QRegularExpression control(uR"(\\[a-z]+-?[0-9]* ?|\\'[0-9a-f]{2}|[{}\r\n])"_s);
    return QString::fromLatin1(rtf).remove(control).size();
}

double megabytes(const QByteArray &bytes)
{
    return double(bytes.size()) / 1e6;
}

} // namespace

BenchRows exchangeRows()
{
    return {
        {"10 exchange document of 200,000 selections, written",
            [] {
                const auto input = std::make_shared<RefiQdpx::ExportInput>(exchangeInput(200'000));
                return BenchRow::Jobs{
                    .straightforward = [=] { keep(plainlyWritten(*input).size()); },
                    .ours = [=] { keep(RefiQdpx::buildProjectXML(*input).size()); },
                    .megabytes = megabytes(RefiQdpx::buildProjectXML(*input)),
                };
            }},
        {"10 exchange document of 200,000 selections, read",
            [] {
                const QByteArray xml = RefiQdpx::buildProjectXML(exchangeInput(200'000));
                return BenchRow::Jobs{
                    .straightforward = [=] { keep(plainlyRead(xml)); },
                    .ours =
                        [=] {
                            QBuffer buffer;
                            buffer.setData(xml);
                            buffer.open(QIODevice::ReadOnly);
                            keep(RefiQdpx::readProjectDocument(buffer).sources.size());
                        },
                    .megabytes = megabytes(xml),
                };
            }},
        {"11 text of a Word part of 26 MB",
            [] {
                const QString part = wordPart();
                return BenchRow::Jobs{
                    .straightforward = [=] { keep(PlainWordText::plainText(part).size()); },
                    .ours = [=] { keep(WordText::plainText(part).size()); },
                    .megabytes = double(part.size()) / 1e6,
                };
            }},
        {"12 Rich Text of 100 MB",
            [] {
                const QByteArray rtf = richText();
                return BenchRow::Jobs{
                    .straightforward = [=] { keep(plainlyStripped(rtf)); },
                    .ours = [=] { keep(RtfText::plainText(rtf)->size()); },
                    .megabytes = megabytes(rtf),
                };
            }},
    };
}
