#pragma once

#include "records/database/DatabaseQueue.h"
#include "records/database/TableChanges.h"

#include <QHash>
#include <QSet>
#include <QUuid>

/// How many passages each code has in one project. Keeps each coding's document and code in memory and reads only what
/// changed: counting a hundred thousand rows after every coded passage could be felt.
class CodeCountCache {
public:
    /// `queue` must outlive this.
    explicit CodeCountCache(DatabaseQueue &queue);

    /// From code id to the number of its codings in documents of the project; codes without any have no entry. Throws
    /// DatabaseError.
    [[nodiscard]] QHash<QUuid, qint64> counts(const QUuid &projectID);

private:
    struct Pair {
        QUuid documentID;
        QUuid codeID;
    };

    void catchUp(Database &database, const QUuid &projectID);
    void readCodings(Database &database);
    void add(const Statement &row);
    void count(const Pair &coding, qint64 change);

    DatabaseQueue &m_queue;
    TableChanges m_codingChanges;
    TableChanges m_documentChanges;
    QHash<qint64, Pair> m_codings; ///< by row id
    QUuid m_projectID;
    QSet<QUuid> m_documentIDs; ///< of the project
    QHash<QUuid, qint64> m_counts;
};
