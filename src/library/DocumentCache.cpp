#include "library/DocumentCache.h"

#include "records/database/Request.h"

#include <algorithm>

namespace {

QByteArray rowsWhere(const char *condition)
{
    return "SELECT rowid, " + RecordMapping::columnNames<Document>() + " FROM document WHERE " + condition;
}

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
    database.forEachRow(rowsWhere("projectID = ?"), {ValueEncoding::encoded(projectID)},
        [&](const Statement &row) { rows.emplace_hint(rows.end(), row.column(0).integer, read(row)); });
    m_rows = std::move(rows);
    m_projectID = projectID;
}

void DocumentCache::loadChanged(Database &database, const std::vector<qint64> &rowIDs)
{
    for (const qint64 rowID : rowIDs) {
        std::optional<Document> document;
        database.forEachRow(rowsWhere("rowid = ? AND projectID = ?"), {rowID, ValueEncoding::encoded(*m_projectID)},
            [&](const Statement &row) { document = read(row); });
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
    Document document;
    int column = 0;
    const auto take = [&](const char *name, auto &value) {
        ++column; // behind the row's number; the identifier comes first
        const bool isText = QByteArrayView(name) == "text";
        if (const Document *before = isText ? known(document.id, row.column(0).integer) : nullptr)
            document.text = before->text;
        else
            ValueEncoding::decode(row.column(column), name, value);
    };
    std::apply(
        [&](const auto &...field) { (take(field.name, document.*field.member), ...); }, Document::databaseColumns());
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
