#pragma once

#include "records/database/DatabaseQueue.h"

#include <QString>

#include <memory>

/// The one database of the program: the file "vorn.sqlite" in the folder of the user's application data.
class AppDatabase {
public:
    /// The shared instance, opened and brought up to date on first use. Throws DatabaseError or FileError when there
    /// can be no database; the records in it are then as they were.
    static AppDatabase &shared();
    /// Where its file is. Makes the folder, for the user alone, if it is missing.
    [[nodiscard]] static QString path();
    /// A new, empty, private database in memory with the same schema. Throws DatabaseError.
    [[nodiscard]] static std::unique_ptr<DatabaseQueue> makeFreshQueue();
    /// Opens or makes the file at `path` and brings its schema up to date. Throws DatabaseError, also for the database
    /// of another program, which stays as it was.
    [[nodiscard]] static std::unique_ptr<DatabaseQueue> openQueue(const QString &path);

    const std::unique_ptr<DatabaseQueue> dbQueue;

private:
    AppDatabase();
};
