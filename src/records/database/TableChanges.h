#pragma once

#include "records/database/DatabaseQueue.h"

#include <QByteArray>

#include <vector>

/// The rows of one table that may have changed since the last call, so that a cache reads only those again.
///
/// Changes made through the queue are known row by row; after a change by another process, of the schema, or of very
/// many rows, the answer is "everything". Changes that were rolled back are included.
class TableChanges final : RowWatcher {
public:
    struct Changes {
        bool everything = false;
        std::vector<qint64> rowIDs; ///< sorted, each once; empty when `everything`

        [[nodiscard]] bool isEmpty() const noexcept { return !everything && rowIDs.empty(); }
    };

    /// `queue` must outlive this.
    TableChanges(DatabaseQueue &queue, const char *table);
    ~TableChanges() override;
    TableChanges(const TableChanges &) = delete;
    TableChanges &operator=(const TableChanges &) = delete;

    /// What changed since the last call; the first call says "everything". To be called inside `read` or `write`, whose
    /// body then sees the rows as they are now. Throws DatabaseError.
    [[nodiscard]] Changes take(Database &database);
    /// Makes the next answer "everything", as after a read that failed half way.
    void forget() noexcept { m_everything = true; }

private:
    void noteChange(const char *table, qint64 rowID) override;

    static constexpr size_t rowLimit = 20'000;

    DatabaseQueue &m_queue;
    QByteArray m_table;
    bool m_everything = true;
    std::vector<qint64> m_rowIDs;
    qint64 m_dataVersion = 0;
    qint64 m_schemaVersion = 0;
};
