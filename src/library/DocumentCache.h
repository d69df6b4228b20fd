#pragma once

#include "records/Document.h"
#include "records/database/DatabaseQueue.h"
#include "records/database/TableChanges.h"

#include <QList>

#include <map>
#include <optional>

class Statement;

/// The documents of one project as the table holds them. Reads only the rows that changed, and no text twice: texts
/// don't change once they are stored.
class DocumentCache {
public:
    /// `queue` must outlive this.
    explicit DocumentCache(DatabaseQueue &queue);

    /// Newest first; documents of the same moment in the order of their rows. Throws DatabaseError.
    [[nodiscard]] QList<Document> documents(const QUuid &projectID);

private:
    void loadAll(Database &database, const QUuid &projectID);
    void loadChanged(Database &database, const std::vector<qint64> &rowIDs);
    [[nodiscard]] Document read(const Statement &row) const;
    [[nodiscard]] const Document *known(const QUuid &id, qint64 rowID) const;
    void arrange();

    DatabaseQueue &m_queue;
    TableChanges m_changes;
    std::optional<QUuid> m_projectID;
    std::map<qint64, Document> m_rows;
    QList<Document> m_documents;
};
