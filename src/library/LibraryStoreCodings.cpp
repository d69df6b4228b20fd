#include "library/LibraryStore.h"

#include "library/LibraryStoreAccess.h"
#include "library/PassageTrimming.h"

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
    const bool isDuplicate =
        readOrEmpty([&](Database &database) { return Coding::filter(same).fetchCount(database); }) != 0;
    if (isDuplicate)
        return;

    Coding coding;
    coding.id = QUuid::createUuid();
    coding.documentID = document.id;
    coding.codeID = code.id;
    coding.start = passage.location;
    coding.length = passage.length;
    coding.createdAt = m_services.now();
    writeIgnoringFailure([&](Database &database) { insertWhole(database, coding); });
    raiseCodingRevision();
    refreshCodeCounts();
}

void LibraryStore::insertWhole(Database &database, const Coding &coding)
{
    const qint64 pairs = database.integer("SELECT COUNT(*) FROM document d JOIN code c ON c.projectID = d.projectID "
                                          "WHERE d.id = ? AND c.id = ?",
        {ValueEncoding::encoded(coding.documentID), ValueEncoding::encoded(coding.codeID)});
    if (pairs == 0)
        throw DatabaseError::recordNotFound(QString::fromUtf8(Coding::databaseTable));
    coding.insert(database);
}

void LibraryStore::removeCoding(const Coding &coding)
{
    const QUuid id = coding.id;
    writeIgnoringFailure([&](Database &database) { Coding::deleteOne(database, id); });
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
