#include "exchange/RefiQdpxExport.h"

#include "exchange/RefiQdpx.h"
#include "exchange/UuidSource.h"
#include "exchange/XmlWriter.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <array>
#include <chrono>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView userGuid("6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11"); // the program has one user
constexpr QLatin1StringView userName("Vorn User");
constexpr QLatin1StringView origin("Vorn 1.0");

constexpr int deepestCode = 8; ///< top-level codes have depth 0
constexpr qint64 longestSelectionName = 120; ///< UTF-16 units

/// An identifier as 36 upper-case characters, written without the detour of a QString: there are three in a selection.
class GuidText {
public:
    explicit GuidText(const QUuid &id)
    {
        put(id.data1, 8);
        put('-');
        put(id.data2, 4);
        put('-');
        put(id.data3, 4);
        put('-');
        for (size_t index = 0; index < 8; ++index) {
            if (index == 2)
                put('-');
            put(id.data4[index], 2);
        }
    }
    [[nodiscard]] QLatin1StringView view() const { return QLatin1StringView(m_text.data(), qsizetype(m_text.size())); }

private:
    void put(uint value, int digits)
    {
        for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
            put("0123456789ABCDEF"[value >> shift & 0xF]);
    }
    void put(char character) { m_text[m_size++] = character; }

    std::array<char, 36> m_text{};
    size_t m_size = 0;
};

/// A moment as "2024-05-31T23:59:59Z"; fractions of a second are cut off.
class DateTimeText {
public:
    explicit DateTimeText(const QDateTime &moment)
    {
        using namespace std::chrono;
        const auto second = floor<seconds>(sys_time<milliseconds>(milliseconds(moment.toMSecsSinceEpoch())));
        const auto day = floor<days>(second);
        const year_month_day date(day);
        const hh_mm_ss time(second - day);
        put(uint(int(date.year())), 4, '-');
        put(uint(date.month()), 2, '-');
        put(uint(date.day()), 2, 'T');
        put(uint(time.hours().count()), 2, ':');
        put(uint(time.minutes().count()), 2, ':');
        put(uint(time.seconds().count()), 2, 'Z');
    }
    [[nodiscard]] QLatin1StringView view() const { return QLatin1StringView(m_text.data(), qsizetype(m_text.size())); }

private:
    void put(uint value, size_t digits, char separator)
    {
        for (size_t index = m_size + digits; index-- > m_size; value /= 10)
            m_text[index] = char('0' + value % 10);
        m_size += digits;
        m_text[m_size++] = separator;
    }

    std::array<char, 20> m_text{};
    size_t m_size = 0;
};

/// The records in the order of a moment of theirs; those of the same moment stay in the order given.
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

/// Writes the tree of codes, siblings in the order of their creation.
class CodesWriter {
public:
    CodesWriter(XmlWriter &xml, const QList<Code> &codes) : m_xml(xml)
    {
        for (const Code *code : sortedBy(&Code::createdAt, codes)) {
            if (code->parentID)
                m_children[*code->parentID].push_back(code);
            else
                m_topLevel.push_back(code);
        }
    }

    void write() const
    {
        m_xml.startElement("Codes");
        for (const Code *code : m_topLevel)
            codeElement(*code, 0);
        m_xml.endElement();
    }

private:
    void codeElement(const Code &code, int depth) const
    {
        m_xml.startElement("Code");
        m_xml.attribute("guid", GuidText(code.id).view());
        m_xml.attribute("name", code.name);
        m_xml.attribute("isCodable", "true"_L1);
        m_xml.attribute("color", RefiQdpx::normalizedColor(code.colorHex));
        writeDescription(m_xml, code.memo);
        const auto children = m_children.constFind(code.id);
        if (depth < deepestCode && children != m_children.constEnd()) {
            for (const Code *child : *children)
                codeElement(*child, depth + 1);
        }
        m_xml.endElement();
    }

    XmlWriter &m_xml;
    std::vector<const Code *> m_topLevel;
    QHash<QUuid, std::vector<const Code *>> m_children;
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
        const GuidText guid(document.id);
        const DateTimeText addedAt(document.addedAt);
        m_xml.startElement("TextSource");
        m_xml.attribute("guid", guid.view());
        m_xml.attribute("name", document.title);
        m_xml.attribute("plainTextPath", u"internal://"_s + guid.view() + u".txt"_s);
        m_xml.attribute("creatingUser", userGuid);
        m_xml.attribute("modifyingUser", userGuid);
        m_xml.attribute("creationDateTime", addedAt.view());
        m_xml.attribute("modifiedDateTime", addedAt.view());
        writeDescription(m_xml, document.memo);
        const auto codings = m_codings.constFind(document.id);
        if (codings != m_codings.constEnd()) {
            for (const Coding *coding : *codings)
                writePassage(document.text, *coding);
        }
        m_xml.endElement();
    }

    void writePassage(QStringView text, const Coding &coding)
    {
        const qint64 start = std::max<qint64>(coding.start, 0);
        if (!m_codeIDs.contains(coding.codeID) || start > text.size())
            return;
        const qint64 length = std::min<qint64>(coding.length, text.size() - start);
        if (length < 1)
            return;
        writeSelection(coding, text.sliced(start, length), start);
    }

    void writeSelection(const Coding &coding, QStringView passage, qint64 start)
    {
        const DateTimeText createdAt(coding.createdAt);
        m_xml.startElement("PlainTextSelection");
        m_xml.attribute("guid", GuidText(m_uuids.next()).view());
        m_xml.attribute("name", passage.first(std::min(passage.size(), longestSelectionName)));
        m_xml.attribute("startPosition", QString::number(start));
        m_xml.attribute("endPosition", QString::number(start + passage.size()));
        m_xml.attribute("creatingUser", userGuid);
        m_xml.attribute("modifyingUser", userGuid);
        m_xml.attribute("creationDateTime", createdAt.view());
        m_xml.attribute("modifiedDateTime", createdAt.view());
        m_xml.startElement("Coding");
        m_xml.attribute("guid", GuidText(coding.id).view());
        m_xml.attribute("creatingUser", userGuid);
        m_xml.attribute("creationDateTime", createdAt.view());
        m_xml.startElement("CodeRef");
        m_xml.attribute("targetGUID", GuidText(coding.codeID).view());
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

void writeUsers(XmlWriter &xml)
{
    xml.startElement("Users");
    xml.startElement("User");
    xml.attribute("guid", userGuid);
    xml.attribute("name", userName);
    xml.endElement();
    xml.endElement();
}

void writeCodeBook(XmlWriter &xml, const QList<Code> &codes)
{
    xml.startElement("CodeBook");
    CodesWriter(xml, codes).write();
    xml.endElement();
}

} // namespace

QByteArray RefiQdpx::buildProjectXML(const ExportInput &input)
{
    XmlWriter xml;
    xml.startElement("Project");
    xml.attribute("xmlns", "urn:QDA-XML:project:1.0"_L1);
    xml.attribute("name", input.project.name);
    xml.attribute("origin", origin);
    xml.attribute("creatingUserGUID", userGuid);
    xml.attribute("modifyingUserGUID", userGuid);
    xml.attribute("creationDateTime", DateTimeText(input.project.createdAt).view());
    xml.attribute("modifiedDateTime", DateTimeText(input.project.modifiedAt).view());
    writeUsers(xml);
    writeCodeBook(xml, input.codes);
    SourcesWriter(xml, input).write();
    xml.endElement();
    return xml.takeDocument();
}

QByteArray RefiQdpx::buildCodebookXML(const QList<Code> &codes)
{
    XmlWriter xml;
    xml.startElement("CodeBook");
    xml.attribute("xmlns", "urn:QDA-XML:codebook:1.0"_L1);
    xml.attribute("origin", origin);
    CodesWriter(xml, codes).write();
    xml.endElement();
    return xml.takeDocument();
}
