#pragma once

#include "records/database/DatabaseQueue.h"
#include "records/database/TableChanges.h"

#include <QHash>
#include <QUuid>

#include <optional>
#include <vector>

/// How many passages each code has in one project. Keeps who belongs to whom in memory and reads only what changed,
/// since counting a hundred thousand rows at every coded passage would be felt.
class CodeCountCache {
public:
    /// `queue` must outlive this.
    explicit CodeCountCache(DatabaseQueue &queue);

    /// From code id to the number of its codings in documents of the project; codes without any have no entry. Throws
    /// DatabaseError.
    [[nodiscard]] QHash<QUuid, qint64> counts(const QUuid &projectID);

private:
    /// Identifiers as small numbers.
    class Register {
    public:
        [[nodiscard]] quint32 number(const QUuid &id);
        [[nodiscard]] const std::vector<QUuid> &ids() const noexcept { return m_ids; }

    private:
        QHash<QUuid, quint32> m_numbers;
        std::vector<QUuid> m_ids;
    };
    struct Pair {
        quint32 document;
        quint32 code;
    };

    [[nodiscard]] bool catchUpWithCodings(Database &database);
    [[nodiscard]] bool catchUpWithDocuments(Database &database, const QUuid &projectID);
    void note(const Statement &row);
    void count();

    DatabaseQueue &m_queue;
    TableChanges m_codingChanges;
    TableChanges m_documentChanges;
    Register m_documentIDs;
    Register m_codeIDs;
    QHash<qint64, Pair> m_codings; ///< by row
    std::vector<bool> m_isInProject; ///< by document number
    std::optional<QUuid> m_projectID;
    QHash<QUuid, qint64> m_counts;
};
