#include "records/database/DatabaseMigrator.h"

#include "records/database/DatabaseError.h"
#include "records/database/DatabaseQueue.h"
#include "records/database/Row.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace {

QSet<QString> appliedIdentifiers(Database &database)
{
    QSet<QString> result;
    for (const Row &row : Row::fetchAll(database, "SELECT identifier FROM grdb_migrations"))
        result.insert(row.value<QString>("identifier").value_or(QString()));
    return result;
}

/// Switches foreign keys off around a migration, which isn't possible within its transaction.
class WithoutForeignKeys {
public:
    explicit WithoutForeignKeys(Database &database)
        : m_database(database),
          m_wereOn(database.integer("PRAGMA foreign_keys") != 0)
    {
        if (m_wereOn)
            m_database.execute("PRAGMA foreign_keys = OFF");
    }
    ~WithoutForeignKeys()
    {
        try {
            if (m_wereOn)
                m_database.execute("PRAGMA foreign_keys = ON");
        } catch (const std::exception &) {
            // The schema declares no foreign keys, so nothing depends on it.
        }
    }
    WithoutForeignKeys(const WithoutForeignKeys &) = delete;
    WithoutForeignKeys &operator=(const WithoutForeignKeys &) = delete;

private:
    Database &m_database;
    bool m_wereOn;
};

void checkForeignKeys(Database &database)
{
    if (!Row::fetchAll(database, "PRAGMA foreign_key_check").empty())
        throw DatabaseError::misuse(u"FOREIGN KEY constraint failed"_s);
}

} // namespace

void DatabaseMigrator::registerMigration(const QByteArray &identifier, Body body)
{
    for (const Migration &migration : m_migrations)
        Q_ASSERT_X(migration.identifier != identifier, "registerMigration", "registered twice");
    m_migrations.push_back({identifier, std::move(body)});
}

void DatabaseMigrator::migrate(DatabaseQueue &queue) const
{
    queue.writeWithoutTransaction([&](Database &database) {
        database.execute("CREATE TABLE IF NOT EXISTS grdb_migrations (identifier TEXT NOT NULL PRIMARY KEY)");
        const QSet<QString> applied = appliedIdentifiers(database);
        for (const Migration &migration : m_migrations) {
            if (!applied.contains(QString::fromUtf8(migration.identifier)))
                apply(migration, database);
        }
    });
}

void DatabaseMigrator::apply(const Migration &migration, Database &database)
{
    const WithoutForeignKeys withoutForeignKeys(database);
    DatabaseQueue::Transaction transaction(database);
    migration.body(database);
    database.execute("INSERT INTO grdb_migrations (identifier) VALUES (?)", {TextValue{migration.identifier}});
    checkForeignKeys(database);
    transaction.commit();
}
