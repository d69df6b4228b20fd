#include "exchange/RefiQdpxExport.h"

#include "exchange/RefiQdpx.h"
#include "exchange/XmlWriter.h"
#include "platform/AtomicFile.h"
#include "platform/ChildProcess.h"
#include "platform/LocalizedError.h"
#include "platform/StagingFolder.h"
#include "platform/UnpairedSurrogates.h"
#include "records/UuidSource.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <map>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView userGuid("6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11"); // the program has one user
constexpr QByteArrayView origin("Vorn 1.0");

constexpr int maxCodeDepth = 8; ///< top-level codes have depth 0
constexpr qint64 maxSelectionName = 120; ///< UTF-16 units

/// The identifier in upper case. QUuid's own text costs a block of memory and a second pass for the case, and every
/// selection has four identifiers.
std::array<char, 36> guidText(const QUuid &id)
{
    std::array<char, 36> text{};
    auto *next = text.begin();
    const auto put = [&next](uint value, int digits) {
        for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
            *next++ = "0123456789ABCDEF"[value >> shift & 0xF];
    };
    put(id.data1, 8);
    for (const ushort part : {id.data2, id.data3, ushort(id.data4[0] << 8 | id.data4[1])}) {
        *next++ = '-';
        put(part, 4);
    }
    *next++ = '-';
    for (size_t index = 2; index < 8; ++index)
        put(id.data4[index], 2);
    return text;
}

/// As "2024-05-31T23:59:59Z"; fractions of a second are cut off. QDateTime does the same in ten times the time, and
/// every selection has a moment.
QByteArray momentText(const QDateTime &moment)
{
    using namespace std::chrono;
    const auto second = floor<seconds>(sys_time<milliseconds>(milliseconds(moment.toMSecsSinceEpoch())));
    const auto day = floor<days>(second);
    const year_month_day date(day);
    const hh_mm_ss time(second - day);
    std::array<char, 64> text{};
    const int length = std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", int(date.year()),
        unsigned(date.month()), unsigned(date.day()), int(time.hours().count()), int(time.minutes().count()),
        int(time.seconds().count()));
    return {text.data(), length};
}

/// The records in the order of one of their moments; equal moments keep the given order.
template <typename Record>
std::vector<const Record *> sortedBy(QDateTime Record::*moment, const QList<Record> &records)
{
    std::vector<const Record *> result;
    result.reserve(size_t(records.size()));
    for (const Record &record : records)
        result.push_back(&record);
    const auto time = [moment](const Record *record) { return (record->*moment).toMSecsSinceEpoch(); };
    std::ranges::stable_sort(result, {}, time); // comparing the moments themselves is many times slower
    return result;
}

void writeDescription(XmlWriter &xml, const std::optional<QString> &memo)
{
    const std::optional<QString> text = RefiQdpx::trimmedMemo(memo);
    if (!text)
        return;
    xml.startElement("Description");
    xml.text(*text);
    xml.endElement();
}

/// Writes who made the open element and when.
void writeOrigin(XmlWriter &xml, QByteArrayView moment)
{
    xml.plainAttribute("creatingUser", userGuid);
    xml.plainAttribute("modifyingUser", userGuid);
    xml.plainAttribute("creationDateTime", moment);
    xml.plainAttribute("modifiedDateTime", moment);
}

/// Writes the tree of codes, siblings in the order of their creation.
class CodesWriter {
public:
    CodesWriter(XmlWriter &xml, const QList<Code> &codes) : m_xml(xml)
    {
        for (const Code *code : sortedBy(&Code::createdAt, codes))
            m_children[code->parentID].push_back(code);
    }

    void write() const
    {
        m_xml.startElement("Codes");
        writeChildren({}, 0);
        m_xml.endElement();
    }

private:
    void writeChildren(const std::optional<QUuid> &parent, int depth) const // ends at the maximum depth
    {
        const auto children = m_children.find(parent);
        if (children == m_children.end())
            return;
        for (const Code *code : children->second) {
            m_xml.startElement("Code");
            m_xml.plainAttribute("guid", guidText(code->id));
            m_xml.attribute("name", code->name);
            m_xml.plainAttribute("isCodable", "true");
            m_xml.attribute("color", RefiQdpx::normalizedColor(code->colorHex));
            writeDescription(m_xml, code->memo);
            if (depth < maxCodeDepth)
                writeChildren(code->id, depth + 1);
            m_xml.endElement();
        }
    }

    XmlWriter &m_xml;
    std::map<std::optional<QUuid>, std::vector<const Code *>> m_children; ///< by parent
};

/// Writes the documents with their coded passages.
class SourcesWriter {
public:
    SourcesWriter(XmlWriter &xml, const RefiQdpx::ExportInput &input) : m_xml(xml), m_documents(input.documents)
    {
        for (const Code &code : input.codes)
            m_codeIDs.insert(code.id);
        for (const Coding *coding : sortedBy(&Coding::createdAt, input.codings))
            m_codings[coding->documentID].push_back(coding);
    }

    void write()
    {
        m_xml.startElement("Sources");
        for (const Document *document : sortedBy(&Document::addedAt, m_documents))
            writeSource(*document);
        m_xml.endElement();
    }

private:
    void writeSource(const Document &document)
    {
        const auto guid = guidText(document.id);
        m_xml.startElement("TextSource");
        m_xml.plainAttribute("guid", guid);
        m_xml.attribute("name", document.title);
        m_xml.plainAttribute("plainTextPath", "internal://" + QByteArray(guid.data(), guid.size()) + ".txt");
        writeOrigin(m_xml, momentText(document.addedAt));
        writeDescription(m_xml, document.memo);
        for (const Coding *coding : m_codings.value(document.id))
            writePassage(document.text, *coding);
        m_xml.endElement();
    }

    void writePassage(QStringView text, const Coding &coding)
    {
        const qint64 start = std::max<qint64>(coding.start, 0);
        const qint64 length = std::min<qint64>(coding.length, text.size() - start);
        if (!m_codeIDs.contains(coding.codeID) || length < 1)
            return;
        const QByteArray createdAt = momentText(coding.createdAt);
        m_xml.startElement("PlainTextSelection");
        m_xml.plainAttribute("guid", guidText(m_uuids.next()));
        m_xml.attribute("name", text.sliced(start, std::min(length, maxSelectionName)));
        m_xml.plainAttribute("startPosition", QByteArray::number(start));
        m_xml.plainAttribute("endPosition", QByteArray::number(start + length));
        writeOrigin(m_xml, createdAt);
        m_xml.startElement("Coding");
        m_xml.plainAttribute("guid", guidText(coding.id));
        m_xml.plainAttribute("creatingUser", userGuid);
        m_xml.plainAttribute("creationDateTime", createdAt);
        m_xml.startElement("CodeRef");
        m_xml.plainAttribute("targetGUID", guidText(coding.codeID));
        m_xml.endElement();
        m_xml.endElement();
        m_xml.endElement();
    }

    XmlWriter &m_xml;
    const QList<Document> &m_documents;
    QSet<QUuid> m_codeIDs;
    QHash<QUuid, std::vector<const Coding *>> m_codings;
    UuidSource m_uuids;
};

QByteArray textFile(const QString &text)
{
    constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    QByteArray bytes = replaceUnpairedSurrogates(text).toUtf8();
    // Readers would take the text's own leading U+FEFF for a mark, and every passage would be off by one.
    if (text.startsWith(u'\uFEFF'))
        bytes.prepend(byteOrderMark);
    return bytes;
}

void writeSources(const QList<Document> &documents, const StagingFolder &staging)
{
    staging.makeFolder(u"sources"_s);
    for (const Document &document : documents) {
        // Nobody else uses the staging folder, so that a file there isn't worth the cost of an atomic write.
        QFile file(staging.path(u"sources/"_s + QString::fromLatin1(guidText(document.id)) + u".txt"_s));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            throw FileError(file);
        AtomicFile::writeAll(file, textFile(document.text));
    }
}

/// Calls `writeArchive` with a path for zip, which appends ".zip" to a name without a dot, and gets the archive to
/// exactly `destination`.
template <typename WriteArchive>
void writeExactly(const QString &destination, WriteArchive writeArchive)
{
    if (QFileInfo(destination).fileName().contains(u'.')) {
        writeArchive(destination);
        return;
    }
    const QString dotted = destination + u'-' + QUuid::createUuid().toString(QUuid::WithoutBraces) + u".zip"_s;
    writeArchive(dotted);
    QFile file(dotted);
    if (!file.rename(destination)) {
        const QString reason = file.errorString();
        file.remove();
        throw FileError(destination, reason);
    }
}

} // namespace

void RefiQdpx::exportArchive(const ExportInput &input, const QString &destination)
{
    const StagingFolder staging(u"vorn-qdpx-"_s);
    AtomicFile::write(staging.path(u"project.qde"_s), buildProjectXML(input));
    writeSources(input.documents, staging);
    const QString target = QFileInfo(destination).absoluteFilePath();
    QFile::remove(target); // zip would add to an existing archive
    writeExactly(target, [&](const QString &path) {
        // -b puts zip's unfinished file into the staging folder: on a full disk it would be left beside the archive.
        const QStringList arguments{
            u"-X"_s, u"-q"_s, u"-r"_s, u"-b"_s, staging.path(), path, u"project.qde"_s, u"sources"_s};
        throwUnlessSucceeded(u"/usr/bin/zip"_s,
            ChildProcess::run(
                {.program = u"/usr/bin/zip"_s, .arguments = arguments, .workingDirectory = staging.path()}));
        // zip makes its unfinished file private; the archive gets the permissions of any other export.
        QFile::setPermissions(path, QFile::permissions(staging.path(u"project.qde"_s)));
    });
}

QByteArray RefiQdpx::buildProjectXML(const ExportInput &input)
{
    XmlWriter xml;
    xml.startElement("Project");
    xml.plainAttribute("xmlns", "urn:QDA-XML:project:1.0");
    xml.attribute("name", input.project.name);
    xml.plainAttribute("origin", origin);
    xml.plainAttribute("creatingUserGUID", userGuid);
    xml.plainAttribute("modifyingUserGUID", userGuid);
    xml.plainAttribute("creationDateTime", momentText(input.project.createdAt));
    xml.plainAttribute("modifiedDateTime", momentText(input.project.modifiedAt));
    xml.startElement("Users");
    xml.startElement("User");
    xml.plainAttribute("guid", userGuid);
    xml.plainAttribute("name", "Vorn User");
    xml.endElement();
    xml.endElement();
    xml.startElement("CodeBook");
    CodesWriter(xml, input.codes).write();
    xml.endElement();
    SourcesWriter(xml, input).write();
    xml.endElement();
    return xml.takeDocument();
}

QByteArray RefiQdpx::buildCodebookXML(const QList<Code> &codes)
{
    XmlWriter xml;
    xml.startElement("CodeBook");
    xml.plainAttribute("xmlns", "urn:QDA-XML:codebook:1.0");
    xml.plainAttribute("origin", origin);
    CodesWriter(xml, codes).write();
    xml.endElement();
    return xml.takeDocument();
}
