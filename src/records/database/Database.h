#pragma once

#include "records/database/DatabaseValue.h"
#include "records/database/Statement.h"

#include <QHash>

#include <memory>

struct sqlite3;

/// The connection inside `DatabaseQueue::read` or `write`.
class Database {
public:
    /// Takes over the connection.
    explicit Database(sqlite3 *connection);
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    [[nodiscard]] sqlite3 *connection() const noexcept { return m_connection; }
    /// Whether a transaction is open.
    [[nodiscard]] bool isInTransaction() const;
    /// Rows written, changed or deleted by the latest statement.
    [[nodiscard]] qint64 changedRowCount() const;

    /// Runs one statement to its end. Throws DatabaseError.
    void execute(QByteArrayView sql, const Arguments &arguments = {});
    /// Runs one statement and shows `visit` the statement on each of its rows. Throws DatabaseError.
    template <typename Visit>
    void forEachRow(QByteArrayView sql, const Arguments &arguments, Visit visit)
    {
        const Lease lease(*this, sql);
        lease.statement->bind(arguments);
        while (lease.statement->step())
            visit(std::as_const(*lease.statement));
    }
    /// The single number of a single row, as of a PRAGMA or a COUNT(*); 0 when there is no row. Throws DatabaseError.
    [[nodiscard]] qint64 integer(QByteArrayView sql, const Arguments &arguments = {});

private:
    /// A prepared statement for one run, reset at its end.
    struct Lease {
        Lease(Database &database, QByteArrayView sql) : statement(database.prepared(sql)) { }
        ~Lease() { statement->reset(); }
        Lease(const Lease &) = delete;
        Lease &operator=(const Lease &) = delete;
        std::shared_ptr<Statement> statement;
    };

    [[nodiscard]] std::shared_ptr<Statement> prepared(QByteArrayView sql);

    sqlite3 *m_connection;
    QHash<QByteArray, std::shared_ptr<Statement>> m_statements;
};
