#include "library/DocumentCache.h"

#include "records/database/Request.h"

#include <algorithm>

namespace {

// The text comes last, and is only asked for where it isn't known: SQLite follows its pages no further than needed.
constexpr auto columns = "SELECT rowid, id, projectID, title, addedAt, sourceKind, wordCount, charCount, memo, text "
                         "FROM document ";
constexpr int textColumn = 9;

} // namespace

DocumentCache::DocumentCache(DatabaseQueue &queue) : m_queue(queue), m_changes(queue, "document")
{
}

QList<Document> DocumentCache::documents(const QUuid &projectID)
{
    m_queue.read([&](Database &database) {
        const TableChanges::Changes changes = m_changes.take(database);
        if (changes.isEmpty() && m_projectID == projectID)
            return;
        try {
            if (changes.everything || m_projectID != projectID)
                loadAll(database, projectID);
            else
                loadChanged(database, changes.rowIDs);
        } catch (...) {
            m_changes.forget();
            throw;
        }
        arrange();
    });
    return m_documents;
}

void DocumentCache::loadAll(Database &database, const QUuid &projectID)
{
    m_projectID.reset(); // until the whole has come in
    std::map<qint64, Document> rows;
    database.forEachRow(QByteArray(columns) + "WHERE projectID = ?", {ValueEncoding::encoded(projectID)},
        [&](const Statement &row) { rows.emplace_hint(rows.end(), row.column(0).integer, read(row)); });
    m_rows = std::move(rows);
    m_projectID = projectID;
}

void DocumentCache::loadChanged(Database &database, const std::vector<qint64> &rowIDs)
{
    for (const qint64 rowID : rowIDs) {
        std::optional<Document> document;
        database.forEachRow(QByteArray(columns) + "WHERE rowid = ? AND projectID = ?",
            {rowID, ValueEncoding::encoded(*m_projectID)}, [&](const Statement &row) { document = read(row); });
        if (document)
            m_rows.insert_or_assign(rowID, *std::move(document));
        else
            m_rows.erase(rowID);
    }
}

/// A row may get another number, and in a file that another hand wrote two rows may have one identifier.
const Document *DocumentCache::known(const QUuid &id, qint64 rowID) const
{
    const auto found = m_rows.find(rowID);
    return found == m_rows.end() || found->second.id != id ? nullptr : &found->second;
}

Document DocumentCache::read(const Statement &row) const
{
    using ValueEncoding::decode;
    Document document;
    decode(row.column(1), "id", document.id);
    decode(row.column(2), "projectID", document.projectID);
    decode(row.column(3), "title", document.title);
    decode(row.column(4), "addedAt", document.addedAt);
    decode(row.column(5), "sourceKind", document.sourceKind);
    decode(row.column(6), "wordCount", document.wordCount);
    decode(row.column(7), "charCount", document.charCount);
    decode(row.column(8), "memo", document.memo);
    if (const Document *before = known(document.id, row.column(0).integer))
        document.text = before->text;
    else
        decode(row.column(textColumn), "text", document.text);
    return document;
}

void DocumentCache::arrange()
{
    m_documents.clear();
    m_documents.reserve(qsizetype(m_rows.size()));
    for (const auto &[rowID, document] : m_rows)
        m_documents.append(document);
    std::ranges::stable_sort(m_documents, std::ranges::greater(), &Document::addedAt);
}
