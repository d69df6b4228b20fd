#pragma once

#include "records/database/Database.h"

#include <QString>

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>
#include <type_traits>
#include <vector>

/// Is told of each row that a connection inserts, updates or deletes.
struct RowWatcher {
    virtual ~RowWatcher() = default;
    virtual void noteChange(const char *table, qint64 rowID) = 0;
};

/// One connection, used by one thread at a time. There is no busy handler: a file that another process has locked
/// fails at once. The journal mode stays SQLite's default, the rollback journal.
class DatabaseQueue {
public:
    /// Opens or makes the file at `path`. Throws DatabaseError.
    explicit DatabaseQueue(const QString &path);
    /// A private database in memory, gone with the queue. Throws DatabaseError.
    DatabaseQueue();
    ~DatabaseQueue();
    DatabaseQueue(const DatabaseQueue &) = delete;
    DatabaseQueue &operator=(const DatabaseQueue &) = delete;

    /// Runs `body(Database &)` with the connection query-only and returns its result. A body must not call back into
    /// the queue. Throws DatabaseError and what the body throws.
    template <typename Body>
    std::invoke_result_t<Body, Database &> read(Body &&body)
    {
        const Turn turn(*this);
        const QueryOnly queryOnly(*m_database);
        return std::forward<Body>(body)(*m_database);
    }
    /// Runs `body(Database &)` in one transaction, which a throwing body rolls back. Throws as `read`.
    template <typename Body>
    std::invoke_result_t<Body, Database &> write(Body &&body)
    {
        const Turn turn(*this);
        Transaction transaction(*m_database);
        if constexpr (std::is_void_v<std::invoke_result_t<Body, Database &>>) {
            std::forward<Body>(body)(*m_database);
            // cppcheck-suppress missingReturn
            transaction.commit();
        } else {
            auto result = std::forward<Body>(body)(*m_database);
            transaction.commit();
            return result;
        }
    }
    /// As `write`, but without a transaction around the body.
    template <typename Body>
    std::invoke_result_t<Body, Database &> writeWithoutTransaction(Body &&body)
    {
        const Turn turn(*this);
        return std::forward<Body>(body)(*m_database);
    }

    /// `watcher` is told of every row that this connection changes, until it is removed. Not owned.
    void addWatcher(RowWatcher &watcher);
    void removeWatcher(RowWatcher &watcher);

    /// A transaction that rolls back unless it was committed.
    class Transaction {
    public:
        explicit Transaction(Database &database);
        ~Transaction();
        Transaction(const Transaction &) = delete;
        Transaction &operator=(const Transaction &) = delete;
        void commit();

    private:
        Database &m_database;
        bool m_ended = false;
    };

private:
    /// Holds the connection for one body. Throws when the same thread holds it already, which would deadlock.
    class Turn {
    public:
        explicit Turn(DatabaseQueue &queue);
        ~Turn();
        Turn(const Turn &) = delete;
        Turn &operator=(const Turn &) = delete;

    private:
        DatabaseQueue &m_queue;
    };
    class QueryOnly {
    public:
        explicit QueryOnly(Database &database);
        ~QueryOnly();
        QueryOnly(const QueryOnly &) = delete;
        QueryOnly &operator=(const QueryOnly &) = delete;

    private:
        Database &m_database;
    };

    std::unique_ptr<Database> m_database;
    std::vector<RowWatcher *> m_watchers;
    std::mutex m_mutex;
    std::atomic<std::thread::id> m_holder;
};
