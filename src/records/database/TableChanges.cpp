#include "records/database/TableChanges.h"

#include <algorithm>

TableChanges::TableChanges(DatabaseQueue &queue, const char *table) : m_queue(queue), m_table(table)
{
    m_queue.addWatcher(*this);
}

TableChanges::~TableChanges()
{
    m_queue.removeWatcher(*this);
}

TableChanges::Changes TableChanges::take(Database &database)
{
    const qint64 dataVersion = database.integer("PRAGMA data_version");
    const qint64 schemaVersion = database.integer("PRAGMA schema_version");
    const bool foreign = dataVersion != m_dataVersion || schemaVersion != m_schemaVersion;
    m_dataVersion = dataVersion;
    m_schemaVersion = schemaVersion;

    Changes result;
    result.everything = m_everything || foreign;
    if (!result.everything) {
        std::ranges::sort(m_rowIDs);
        m_rowIDs.erase(std::unique(m_rowIDs.begin(), m_rowIDs.end()), m_rowIDs.end());
        result.rowIDs = std::move(m_rowIDs);
    }
    m_everything = false;
    m_rowIDs.clear();
    return result;
}

void TableChanges::noteChange(const char *table, qint64 rowID)
{
    if (m_everything || m_table != table)
        return;
    if (m_rowIDs.size() == rowLimit) {
        m_everything = true;
        m_rowIDs.clear();
        return;
    }
    m_rowIDs.push_back(rowID);
}
