#include "exchange/RefiQdpxImport.h"

#include "exchange/RefiQdpx.h"
#include "exchange/RefiQdpxDocument.h"
#include "exchange/UnpackedArchive.h"
#include "platform/LocalizedError.h"
#include "platform/TextDecoder.h"
#include "records/Code.h"
#include "records/Coding.h"
#include "records/Document.h"
#include "records/TextStats.h"
#include "records/UuidSource.h"
#include "records/database/DatabaseQueue.h"
#include "records/database/Request.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace RefiQdpx {

namespace {

constexpr qint64 recordsPerQuestion = 1'000; // takes some milliseconds
constexpr qint64 maxRepeatedText = qint64(64) << 20; // UTF-16 units; many sources may name the same file

QDateTime now()
{
    return QDateTime::currentDateTimeUtc();
}

ParsedDocument parsedDocument(const UnpackedArchive &archive, const std::function<void()> &onPiece)
{
    const std::optional<QString> path = archive.path(u"project.qde");
    if (!path)
        throw RefiError::notUsable(u"project.qde was not found in the archive"_s);
    QFile file(*path);
    if (!file.open(QIODevice::ReadOnly))
        throw FileError(file);
    ParsedDocument document = readProjectDocument(file, onPiece);
    if (!document.isProject)
        throw RefiError::notUsable(u"the root element is not <Project>"_s);
    return document;
}

std::optional<QString> textOfFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > maxText)
        return {};
    const QByteArray bytes = file.readAll();
    return file.error() == QFileDevice::NoError
        ? std::optional(TextDecoder::decoded(bytes, {TextDecoder::utf8, TextDecoder::utf16}))
        : std::nullopt;
}

/// The name of the archive's member that a source's path means.
QStringView memberName(QStringView plainTextPath)
{
    constexpr QStringView scheme(u"internal://");
    if (plainTextPath.startsWith(scheme))
        return plainTextPath.sliced(scheme.size());
    while (plainTextPath.endsWith(u'/'))
        plainTextPath.chop(1);
    return plainTextPath.sliced(plainTextPath.lastIndexOf(u'/') + 1);
}

struct MemberText {
    QString path; ///< of the file that holds it
    QString text;
};

/// The text of the first candidate that exists and can be read: some tools keep texts in the root of the archive, and
/// some write names with percent encoding.
std::optional<MemberText> textOfMember(const UnpackedArchive &archive, const QString &plainTextPath)
{
    const QString literal = memberName(plainTextPath).toString();
    const QString unescaped = QString::fromUtf8(QByteArray::fromPercentEncoding(literal.toUtf8()));
    for (const QString &name : {literal, unescaped}) {
        for (const QString &candidate : {u"sources/"_s + name, name}) {
            const std::optional<QString> path = archive.path(candidate);
            std::optional<QString> text = path ? textOfFile(*path) : std::nullopt;
            if (text)
                return MemberText{*path, *std::move(text)};
        }
    }
    return {};
}

void throwIfStopped(const MayImport &mayImport, const ImportStep &step)
{
    if (mayImport && !mayImport(step))
        throw ImportStopped();
}

size_t codedRangeCount(const ParsedDocument &document)
{
    size_t count = 0;
    for (const ParsedDocument::Source &source : document.sources)
        count += source.codedRanges.size();
    return count;
}

/// Adds a parsed document to the database, inside a transaction.
class Import {
public:
    /// `step` is what is reported until the first source.
    Import(Database &database, const QUuid &projectID, const UnpackedArchive &archive, const MayImport &mayImport,
        ImportStep step)
        : m_database(database),
          m_projectID(projectID),
          m_archive(archive),
          m_mayImport(mayImport),
          m_step(std::move(step))
    {
    }

    ImportSummary run(const ParsedDocument &document)
    {
        m_codeIDs.reserve(document.codes.size());
        m_codingIDs = m_uuids.ascending(codedRangeCount(document));
        for (const ParsedDocument::ParsedCode &code : document.codes)
            importCode(code);
        const std::vector<ParsedDocument::Source> &sources = document.sources;
        for (size_t index = 0; index < sources.size(); ++index) {
            m_step = {qint64(index) + 1, qint64(sources.size()), sources[index].title};
            throwIfStopped(m_mayImport, m_step);
            importTextSource(sources[index], document);
        }
        return m_summary;
    }

private:
    void importCode(const ParsedDocument::ParsedCode &parsed)
    {
        Code code;
        code.id = m_uuids.next();
        code.projectID = m_projectID;
        code.name = parsed.name;
        code.colorHex = parsed.colorHex;
        code.memo = trimmedMemo(parsed.memo);
        if (parsed.parent)
            code.parentID = m_codeIDs[*parsed.parent];
        code.createdAt = now();
        insert(code);
        m_codeIDs.push_back(code.id);
        ++m_summary.codes;
    }

    void importTextSource(const ParsedDocument::Source &source, const ParsedDocument &parsed)
    {
        std::optional<QString> text = textOf(source);
        if (!text || text->isEmpty())
            return;
        Document document;
        document.id = m_uuids.next();
        document.projectID = m_projectID;
        document.title = source.title;
        document.text = *std::move(text);
        document.addedAt = now();
        document.sourceKind = u"qdpx"_s;
        document.wordCount = TextStats::wordCount(document.text);
        document.charCount = TextStats::characterCount(document.text);
        document.memo = trimmedMemo(source.memo);
        insert(document);
        ++m_summary.documents;
        for (const ParsedDocument::CodedRange &codedRange : source.codedRanges) {
            if (const std::optional<size_t> code = parsed.codeOfTarget[codedRange.target])
                importCoding(document, codedRange.range, m_codeIDs[*code]);
        }
    }

    [[nodiscard]] std::optional<QString> textOf(const ParsedDocument::Source &source)
    {
        if (source.content)
            return TextDecoder::unmarkedUtf8(*source.content);
        std::optional<MemberText> member =
            source.plainTextPath ? textOfMember(m_archive, *source.plainTextPath) : std::nullopt;
        if (!member)
            return {};
        limitRepetition(*member);
        return std::move(member->text);
    }

    /// Otherwise a small archive could fill the disk by naming one of its files in many sources.
    void limitRepetition(const MemberText &member)
    {
        if (m_usedFiles.contains(member.path))
            m_repeatedText += member.text.size();
        m_usedFiles.insert(member.path);
        if (m_repeatedText > maxRepeatedText)
            throw RefiError::notUsable(u"it repeats more text than a project can hold"_s);
    }

    void importCoding(const Document &document, const TextRange &range, const QUuid &codeID)
    {
        const qint64 room = document.text.size() - range.location;
        if (room < 1)
            return;
        Coding coding;
        coding.id = m_codingIDs[size_t(m_summary.excerpts)];
        coding.documentID = document.id;
        coding.codeID = codeID;
        coding.start = range.location;
        coding.length = std::min(range.length, room);
        coding.createdAt = now();
        insert(coding);
        ++m_summary.excerpts;
    }

    template <typename Record>
    void insert(const Record &record)
    {
        record.insert(m_database);
        if (++m_recordCount % recordsPerQuestion == 0)
            throwIfStopped(m_mayImport, m_step);
    }

    Database &m_database;
    const QUuid m_projectID;
    const UnpackedArchive &m_archive;
    const MayImport &m_mayImport;
    ImportStep m_step;
    qint64 m_recordCount = 0;
    std::vector<QUuid> m_codeIDs; ///< of the records, in the order of the parsed codes
    std::vector<QUuid> m_codingIDs; ///< for the codings to come
    QSet<QString> m_usedFiles; ///< by their paths
    qint64 m_repeatedText = 0; ///< of files that were used before, in UTF-16 units
    UuidSource m_uuids;
    ImportSummary m_summary;
};

} // namespace

ImportSummary importQdpx(
    const QString &archive, DatabaseQueue &queue, const QUuid &projectID, const MayImport &mayImport)
{
    const ImportStep whole{1, 1, QFileInfo(archive).fileName()};
    const UnpackedArchive unpacked(archive, {}, [&] { return !mayImport || mayImport(whole); });
    const auto pause = [&] { throwIfStopped(mayImport, whole); };
    pause();
    const ParsedDocument document = parsedDocument(unpacked, pause);
    return queue.write(
        [&](Database &database) { return Import(database, projectID, unpacked, mayImport, whole).run(document); });
}

} // namespace RefiQdpx
