#include "Require.h"
#include "exchange/RefiQdpxImport.h"
#include "platform/AtomicFile.h"
#include "platform/LocalizedError.h"
#include "records/AppDatabase.h"
#include "records/Code.h"
#include "records/Coding.h"
#include "records/Document.h"
#include "records/database/Request.h"
#include "support/TestArchive.h"

#include <QHash>

namespace {

/// An input is a whole archive, or the members of one: the project document, then each other member after its name,
/// separated by control characters that no XML document holds.
QByteArray archiveOf(QByteArrayView input)
{
    constexpr char betweenMembers = '\x1E';
    constexpr char afterName = '\x1F';
    if (input.startsWith("PK"))
        return input.toByteArray();
    const QList<QByteArray> parts = input.toByteArray().split(betweenMembers);
    TestArchive archive;
    archive.add("project.qde", parts.first());
    for (const QByteArray &part : parts.sliced(1)) {
        const qsizetype end = part.indexOf(afterName);
        const QByteArray name = part.left(std::max<qsizetype>(end, 0));
        const bool isLink = name.startsWith('>');
        archive.add(isLink ? name.sliced(1) : name, part.sliced(end + 1),
            isLink ? TestArchive::symbolicLink : TestArchive::regularFile);
    }
    return archive.bytes();
}

void checkCodes(const QList<Code> &codes)
{
    QHash<QUuid, std::optional<QUuid>> parents;
    for (const Code &code : codes)
        parents.insert(code.id, code.parentID);
    for (const Code &code : codes) {
        int depth = 0;
        for (std::optional<QUuid> parent = code.parentID; parent; parent = parents.value(*parent)) {
            require(parents.contains(*parent));
            require(++depth < 8);
        }
    }
}

void checkWhole(Database &database)
{
    const QList<Code> codes = Code::all().fetchAll(database);
    checkCodes(codes);
    QHash<QUuid, qsizetype> lengths;
    for (const Document &document : Document::all().fetchAll(database))
        lengths.insert(document.id, document.text.size());
    for (const Coding &coding : Coding::all().fetchAll(database)) {
        require(std::ranges::find(codes, coding.codeID, &Code::id) != codes.end());
        require(lengths.contains(coding.documentID));
        require(coding.start >= 0 && coding.length > 0 && coding.length <= lengths.value(coding.documentID));
        require(coding.start <= lengths.value(coding.documentID) - coding.length);
    }
}

void checkEmpty(Database &database)
{
    require(Code::all().fetchCount(database) == 0);
    require(Document::all().fetchCount(database) == 0);
    require(Coding::all().fetchCount(database) == 0);
}

} // namespace

/// An import of any archive adds whole records or nothing, and leaves no temporary file.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const OwnTemporaryFolder folder;
    const QString archive = folder.path(QStringLiteral("study.qdpx"));
    AtomicFile::write(archive, archiveOf(QByteArrayView(data, qsizetype(size))));
    const auto queue = AppDatabase::makeFreshQueue();
    try {
        const RefiQdpx::ImportSummary summary = RefiQdpx::importQdpx(archive, *queue, QUuid::createUuid());
        queue->read(checkWhole);
        queue->read([&](Database &database) {
            require(Document::all().fetchCount(database) == summary.documents);
            require(Coding::all().fetchCount(database) == summary.excerpts);
        });
    } catch (const LocalizedError &error) {
        require(!error.description().isEmpty());
        queue->read(checkEmpty);
    }
    require(!folder.hasLeftovers());
    return 0;
}
