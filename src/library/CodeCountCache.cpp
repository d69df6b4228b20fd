#include "library/CodeCountCache.h"

#include "records/database/Request.h"

namespace {

QSet<QUuid> documentIDs(Database &database, const QUuid &projectID)
{
    QSet<QUuid> ids;
    database.forEachRow(
        "SELECT id FROM document WHERE projectID = ?", {ValueEncoding::encoded(projectID)}, [&](const Statement &row) {
            if (const auto id = ValueEncoding::identifier(row.column(0)))
                ids.insert(*id);
        });
    return ids;
}

} // namespace

CodeCountCache::CodeCountCache(DatabaseQueue &queue)
    : m_queue(queue),
      m_codingChanges(queue, "coding"),
      m_documentChanges(queue, "document")
{
}

QHash<QUuid, qint64> CodeCountCache::counts(const QUuid &projectID)
{
    m_queue.read([&](Database &database) {
        try {
            catchUp(database, projectID);
        } catch (...) {
            m_codingChanges.forget();
            m_documentChanges.forget();
            throw;
        }
    });
    return m_counts;
}

void CodeCountCache::catchUp(Database &database, const QUuid &projectID)
{
    const bool documentsChanged = !m_documentChanges.take(database).isEmpty();
    if (!documentsChanged && projectID == m_projectID)
        return readCodings(database);
    m_projectID = projectID;
    QSet<QUuid> ids = documentIDs(database, projectID);
    if (ids == m_documentIDs)
        return readCodings(database);
    m_documentIDs.clear(); // nothing is counted until all codings have been read
    readCodings(database);
    m_documentIDs = std::move(ids);
    m_counts.clear();
    for (const Pair &coding : std::as_const(m_codings))
        count(coding, 1);
}

void CodeCountCache::readCodings(Database &database)
{
    const QByteArray columns = "SELECT rowid, documentID, codeID FROM coding";
    const TableChanges::Changes changes = m_codingChanges.take(database);
    if (changes.everything) {
        m_codings.clear();
        m_counts.clear();
        database.forEachRow(columns, {}, [&](const Statement &row) { add(row); });
    }
    for (const qint64 rowID : changes.rowIDs) {
        if (m_codings.contains(rowID))
            count(m_codings.take(rowID), -1);
        database.forEachRow(columns + " WHERE rowid = ?", {rowID}, [&](const Statement &row) { add(row); });
    }
}

void CodeCountCache::add(const Statement &row)
{
    const auto documentID = ValueEncoding::identifier(row.column(1));
    const auto codeID = ValueEncoding::identifier(row.column(2));
    if (documentID && codeID)
        count(*m_codings.insert(row.column(0).integer, {*documentID, *codeID}), 1);
}

void CodeCountCache::count(const Pair &coding, qint64 change)
{
    if (!m_documentIDs.contains(coding.documentID))
        return;
    qint64 &codings = m_counts[coding.codeID];
    codings += change;
    if (codings == 0)
        m_counts.remove(coding.codeID);
}
