#include "records/AppDatabase.h"

#include "records/SchemaGuard.h"
#include "records/database/DatabaseMigrator.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

void createCore(Database &database)
{
    database.execute(R"(CREATE TABLE "project" ("id" TEXT PRIMARY KEY NOT NULL, "name" TEXT NOT NULL, )"
                     R"("createdAt" DATETIME NOT NULL, "modifiedAt" DATETIME NOT NULL))");
    database.execute(R"(CREATE TABLE "document" ("id" TEXT PRIMARY KEY NOT NULL, "projectID" TEXT NOT NULL, )"
                     R"("title" TEXT NOT NULL, "text" TEXT NOT NULL, "addedAt" DATETIME NOT NULL, )"
                     R"("sourceKind" TEXT NOT NULL, "wordCount" INTEGER NOT NULL, "charCount" INTEGER NOT NULL))");
    database.execute(R"(CREATE INDEX "document_on_projectID" ON "document"("projectID"))");
}

void codes(Database &database)
{
    database.execute(
        R"(CREATE TABLE "code" ("id" TEXT PRIMARY KEY NOT NULL, "projectID" TEXT NOT NULL, )"
        R"("name" TEXT NOT NULL, "colorHex" TEXT NOT NULL, "parentID" TEXT, "createdAt" DATETIME NOT NULL))");
    database.execute(R"(CREATE INDEX "code_on_projectID" ON "code"("projectID"))");
    database.execute(R"(CREATE INDEX "code_on_parentID" ON "code"("parentID"))");
    database.execute(R"(CREATE TABLE "coding" ("id" TEXT PRIMARY KEY NOT NULL, "documentID" TEXT NOT NULL, )"
                     R"("codeID" TEXT NOT NULL, "start" INTEGER NOT NULL, "length" INTEGER NOT NULL, )"
                     R"("createdAt" DATETIME NOT NULL))");
    database.execute(R"(CREATE INDEX "coding_on_documentID" ON "coding"("documentID"))");
    database.execute(R"(CREATE INDEX "coding_on_codeID" ON "coding"("codeID"))");
}

void memos(Database &database)
{
    database.execute(R"(ALTER TABLE "code" ADD COLUMN "memo" TEXT)");
    database.execute(R"(ALTER TABLE "document" ADD COLUMN "memo" TEXT)");
}

struct Migration {
    const char *identifier;
    void (*body)(Database &);
};

/// Stored files carry these identifiers: a change of the schema is a new migration at the end.
constexpr std::array migrations{
    Migration{"createCore", createCore}, Migration{"codes", codes}, Migration{"memos", memos}};

template <typename Predicate>
void migrate(DatabaseQueue &queue, Predicate includes)
{
    DatabaseMigrator migrator;
    for (const Migration &migration : migrations) {
        if (includes(migration.identifier))
            migrator.registerMigration(migration.identifier, migration.body);
    }
    migrator.migrate(queue);
}

void bringUpToDate(DatabaseQueue &queue)
{
    migrate(queue, [](const char *) { return true; });
}

/// A file that can't be our library must stay as it is, so this only reads.
void refuseUnlessOurs(DatabaseQueue &file)
{
    const QByteArrayList applied = SchemaGuard::appliedMigrations(file, migrations.front().identifier);
    DatabaseQueue model;
    migrate(model, [&](const char *identifier) { return applied.contains(identifier); });
    if (!applied.isEmpty())
        SchemaGuard::refuseUnlike(model, file);
}

/// Only the user may read the file. SQLite would make it, or the missing target of a link, with ordinary permissions.
void makePrivateFile(const QString &path)
{
    if (!QFileInfo::exists(path)) // follows a link
        QFile(path).open(QIODevice::ReadWrite, QFile::ReadOwner | QFile::WriteOwner);
}

} // namespace

AppDatabase &AppDatabase::shared()
{
    static AppDatabase instance;
    return instance;
}

QString AppDatabase::path()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Vorn"_s;
    QDir().mkpath(QFileInfo(folder).path());
    // Private from the first moment. A failure shows when the file is opened.
    QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return folder + u"/vorn.sqlite"_s;
}

AppDatabase::AppDatabase() : dbQueue(openQueue(path()))
{
}

std::unique_ptr<DatabaseQueue> AppDatabase::openQueue(const QString &path)
{
    SchemaGuard::refuseUnfinishedForeign(path);
    makePrivateFile(path);
    auto queue = std::make_unique<DatabaseQueue>(path);
    refuseUnlessOurs(*queue);
    bringUpToDate(*queue);
    return queue;
}

std::unique_ptr<DatabaseQueue> AppDatabase::makeFreshQueue()
{
    auto queue = std::make_unique<DatabaseQueue>();
    bringUpToDate(*queue);
    return queue;
}
