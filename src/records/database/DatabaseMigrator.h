#pragma once

#include <QByteArray>

#include <functional>
#include <vector>

class Database;
class DatabaseQueue;

/// Brings a database up to date by named steps, each run once per database, in the order of their registration.
class DatabaseMigrator {
public:
    using Body = std::function<void(Database &)>;

    /// An identifier may be registered once.
    void registerMigration(const QByteArray &identifier, Body body);
    /// Runs the migrations that the database doesn't have yet, each in a transaction of its own. The first one
    /// that fails is rolled back and ends the run. Identifiers that the database knows and this doesn't are left alone.
    /// Throws DatabaseError.
    void migrate(DatabaseQueue &queue) const;

private:
    struct Migration {
        QByteArray identifier;
        Body body;
    };
    static void apply(const Migration &migration, Database &database);

    std::vector<Migration> m_migrations;
};
