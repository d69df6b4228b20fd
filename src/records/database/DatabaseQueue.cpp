#include "records/database/DatabaseQueue.h"

#include "records/database/DatabaseError.h"

#include <sqlite3.h>

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<Database> opened(const QByteArray &name)
{
    // SQLite's own mutexes are needless: the queue lets one thread in at a time.
    constexpr int flags = SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    sqlite3 *raw = nullptr;
    const int status = sqlite3_open_v2(name.constData(), &raw, flags, nullptr);
    auto database = std::make_unique<Database>(raw); // owns it before the check may throw
    if (status != SQLITE_OK) {
        const char *message = raw ? sqlite3_errmsg(raw) : sqlite3_errstr(status);
        throw DatabaseError::whileExecuting(status, QString::fromUtf8(message), {});
    }
    return database;
}

/// SQLite opens a file that it may not write for reading only, without an error.
void refuseReadOnly(sqlite3 *connection)
{
    if (sqlite3_db_readonly(connection, "main") == 1)
        throw DatabaseError::misuse(u"The file may only be read, and Vorn must be able to write it."_s);
}

void setUp(Database &database)
{
    sqlite3 *connection = database.connection();
    sqlite3_busy_timeout(connection, 0);
    // A column that isn't there must be an error, not its name as a text.
    sqlite3_db_config(connection, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    // Triggers in a file from elsewhere must not change records. We have none.
    sqlite3_db_config(connection, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    // Functions with side effects mustn't be called by views, checks and indexes of the file.
    sqlite3_db_config(connection, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    database.execute("PRAGMA foreign_keys = ON");
    sqlite3_extended_result_codes(connection, 1);
    refuseReadOnly(connection); // before the first access, which could fail because of it
    database.execute("SELECT * FROM sqlite_master LIMIT 1");
    refuseReadOnly(connection); // again, since only the first access reads the version of the format
    // Identifiers are random, so an insert may touch any page of an index: all should fit. Not stored in the file.
    database.execute("PRAGMA cache_size = -65536");
}

} // namespace

DatabaseQueue::DatabaseQueue(const QString &path) : m_database(opened(QFile::encodeName(path)))
{
    setUp(*m_database);
}

DatabaseQueue::DatabaseQueue() : m_database(opened(":memory:"))
{
    setUp(*m_database);
}

DatabaseQueue::~DatabaseQueue() = default;

void DatabaseQueue::addWatcher(RowWatcher &watcher)
{
    if (m_watchers.empty()) {
        const auto tell = [](void *watchers, int, const char *, const char *table, sqlite3_int64 rowID) {
            for (RowWatcher *each : *static_cast<std::vector<RowWatcher *> *>(watchers))
                each->noteChange(table, rowID);
        };
        sqlite3_update_hook(m_database->connection(), tell, &m_watchers);
    }
    m_watchers.push_back(&watcher);
}

void DatabaseQueue::removeWatcher(RowWatcher &watcher)
{
    std::erase(m_watchers, &watcher);
}

DatabaseQueue::Transaction::Transaction(Database &database) : m_database(database)
{
    m_database.execute("BEGIN IMMEDIATE TRANSACTION");
}

DatabaseQueue::Transaction::~Transaction()
{
    // SQLite rolls back by itself after some failures, such as a full disk.
    if (m_ended || !m_database.isInTransaction())
        return;
    try {
        m_database.execute("ROLLBACK TRANSACTION");
    } catch (const std::exception &) {
        // The caller gets the first failure; the journal keeps the file whole.
    }
}

void DatabaseQueue::Transaction::commit()
{
    m_database.execute("COMMIT TRANSACTION");
    m_ended = true;
}

DatabaseQueue::Turn::Turn(DatabaseQueue &queue) : m_queue(queue)
{
    if (m_queue.m_holder == std::this_thread::get_id())
        throw DatabaseError::misuse(u"The database was entered again from within an access to it."_s);
    m_queue.m_mutex.lock();
    m_queue.m_holder = std::this_thread::get_id();
}

DatabaseQueue::Turn::~Turn()
{
    m_queue.m_holder = std::thread::id();
    m_queue.m_mutex.unlock();
}

DatabaseQueue::QueryOnly::QueryOnly(Database &database) : m_database(database)
{
    m_database.execute("PRAGMA query_only = 1");
}

DatabaseQueue::QueryOnly::~QueryOnly()
{
    try {
        m_database.execute("PRAGMA query_only = 0");
    } catch (const std::exception &) {
        // Only memory can fail here; the next write would say so.
    }
}
