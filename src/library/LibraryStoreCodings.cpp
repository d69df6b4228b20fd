#include "library/LibraryStore.h"

#include "library/PassageTrimming.h"
#include "records/database/Request.h"

using namespace Qt::StringLiterals;

QList<Coding> LibraryStore::codings(const Document &document) const
{
    return readOrEmpty([&](Database &database) {
        return Coding::filter(Column("documentID") == document.id).order(Column("createdAt")).fetchAll(database);
    });
}

void LibraryStore::assignCode(const Code &code, const Document &document, const TextRange &range)
{
    const TextRange passage = PassageTrimming::passage(document.text, range);
    if (passage.length == 0)
        return;
    const Expression same = Column("documentID") == document.id && Column("codeID") == code.id
        && Column("start") == passage.location && Column("length") == passage.length;
    if (readOrEmpty([&](Database &database) { return Coding::filter(same).fetchCount(database); }) > 0)
        return;
    addCoding(document.id, code.id, passage);
    raiseCodingRevision();
    refreshCodeCounts();
}

/// Not unless the document and the code are stored in one project: they may be listed although their own write failed,
/// and a coding without one of them would stand in no list.
void LibraryStore::addCoding(const QUuid &documentID, const QUuid &codeID, const TextRange &range)
{
    Coding coding;
    coding.id = QUuid::createUuid();
    coding.documentID = documentID;
    coding.codeID = codeID;
    coding.start = range.location;
    coding.length = range.length;
    coding.createdAt = m_services.now();
    tryWrite([&](Database &database) {
        const qint64 pairs = database.integer("SELECT COUNT(*) FROM document d JOIN code c ON c.projectID = "
                                              "d.projectID WHERE d.id = ? AND c.id = ?",
            {ValueEncoding::encoded(documentID), ValueEncoding::encoded(codeID)});
        if (pairs > 0)
            coding.insert(database);
    });
}

void LibraryStore::raiseCodingRevision()
{
    m_codingRevision.replace([](qint64 &revision) { ++revision; });
}

void LibraryStore::removeCoding(const Coding &coding)
{
    tryWrite([&](Database &database) { Coding::deleteOne(database, coding.id); });
    raiseCodingRevision();
    refreshCodeCounts();
}

QList<ExcerptHit> LibraryStore::excerpts(const QUuid &codeID) const
{
    try {
        return readExcerpts(codeID);
    } catch (const LocalizedError &) {
        return {};
    }
}

QList<ExcerptHit> LibraryStore::readExcerpts(const QUuid &codeID) const
{
    const QList<Coding> codings = m_queue.read([&](Database &database) {
        return Coding::filter(Column("codeID") == codeID).order(Column("createdAt")).fetchAll(database);
    });
    QList<ExcerptHit> hits;
    for (const Coding &coding : codings) {
        const Document *document = findDocument(coding.documentID);
        if (!document || !PassageTrimming::liesIn(document->text, coding.range()))
            continue;
        hits.append({coding.id, coding.documentID, document->title,
            Snippet::withoutLineFeeds(document->text, coding.range()), coding.start, coding.length, coding.createdAt});
    }
    return hits;
}

void LibraryStore::reveal(const ExcerptHit &hit)
{
    reveal(hit.documentID, hit.id, hit.range());
}

void LibraryStore::reveal(const QueryResult &result)
{
    reveal(result.documentID, result.id, result.range);
}

void LibraryStore::reveal(const WordFrequency::Occurrence &occurrence)
{
    reveal(occurrence.documentID, occurrence.id, occurrence.range);
}

void LibraryStore::reveal(const QUuid &documentID, const QUuid &itemID, const TextRange &range)
{
    const RevealRequest request{
        documentID, itemID, range, m_revealRequest.get() ? m_revealRequest->value().token + 1 : 1};
    m_selectedDocumentID.set(request.documentID);
    m_revealRequest.set(request);
}

bool LibraryStore::shouldShowCodingHint() const
{
    return !m_codingHintDismissed.get() && m_codeCounts->isEmpty() && !m_documents->isEmpty();
}
