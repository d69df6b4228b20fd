#include "library/CodeCountCache.h"

#include "records/database/Request.h"

namespace {

constexpr auto allRows = "SELECT rowid, documentID, codeID FROM coding";
constexpr auto oneRow = "SELECT rowid, documentID, codeID FROM coding WHERE rowid = ?";

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
            const bool codingsChanged = catchUpWithCodings(database);
            const bool documentsChanged = catchUpWithDocuments(database, projectID);
            if (codingsChanged || documentsChanged)
                count();
        } catch (...) {
            m_codingChanges.forget();
            m_documentChanges.forget();
            throw;
        }
    });
    return m_counts;
}

bool CodeCountCache::catchUpWithCodings(Database &database)
{
    const TableChanges::Changes changes = m_codingChanges.take(database);
    if (changes.everything) {
        m_codings.clear();
        database.forEachRow(allRows, {}, [&](const Statement &row) { note(row); });
    }
    for (const qint64 rowID : changes.rowIDs) {
        m_codings.remove(rowID);
        database.forEachRow(oneRow, {rowID}, [&](const Statement &row) { note(row); });
    }
    return !changes.isEmpty();
}

bool CodeCountCache::catchUpWithDocuments(Database &database, const QUuid &projectID)
{
    const bool changed = !m_documentChanges.take(database).isEmpty();
    if (!changed && m_projectID == projectID)
        return false;
    m_projectID.reset();
    m_isInProject.assign(m_isInProject.size(), false);
    database.forEachRow(
        "SELECT id FROM document WHERE projectID = ?", {ValueEncoding::encoded(projectID)}, [&](const Statement &row) {
            const auto id = ValueEncoding::identifier(row.column(0));
            if (!id)
                return;
            const quint32 number = m_documentIDs.number(*id);
            if (number >= m_isInProject.size())
                m_isInProject.resize(size_t(number) + 1);
            m_isInProject[number] = true;
        });
    m_projectID = projectID;
    return true;
}

void CodeCountCache::note(const Statement &row)
{
    const auto documentID = ValueEncoding::identifier(row.column(1));
    const auto codeID = ValueEncoding::identifier(row.column(2));
    if (documentID && codeID)
        m_codings.insert(row.column(0).integer, {m_documentIDs.number(*documentID), m_codeIDs.number(*codeID)});
}

void CodeCountCache::count()
{
    std::vector<qint64> totals(m_codeIDs.ids().size());
    for (const Pair &pair : std::as_const(m_codings)) {
        if (pair.document < m_isInProject.size() && m_isInProject[pair.document])
            ++totals[pair.code];
    }
    m_counts.clear();
    for (size_t code = 0; code < totals.size(); ++code) {
        if (totals[code] > 0)
            m_counts.insert(m_codeIDs.ids()[code], totals[code]);
    }
}

quint32 CodeCountCache::Register::number(const QUuid &id)
{
    const auto found = m_numbers.constFind(id);
    if (found != m_numbers.constEnd())
        return *found;
    const auto number = quint32(m_ids.size());
    m_numbers.insert(id, number);
    m_ids.push_back(id);
    return number;
}
