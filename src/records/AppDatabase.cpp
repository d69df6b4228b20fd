#include "records/AppDatabase.h"

#include "platform/ApplicationFolder.h"
#include "records/database/DatabaseMigrator.h"
#include "records/schema/SchemaCheck.h"
#include "records/schema/SchemaReplay.h"
#include "records/schema/UnfinishedFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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

/// Stored files carry these identifiers: a change of the schema is a new migration behind them.
void bringUpToDate(DatabaseQueue &queue)
{
    DatabaseMigrator migrator;
    migrator.registerMigration("createCore", createCore);
    migrator.registerMigration("codes", codes);
    migrator.registerMigration("memos", memos);
    migrator.migrate(queue);
}

/// Whether a file can be our library shows in its schema, in memory: nothing may have been written to one that can't.
void refuseUnlessOurs(DatabaseQueue &queue)
{
    SchemaCheck::refuseForeign(queue);
    const auto replayed = SchemaReplay::inMemory(queue);
    bringUpToDate(*replayed);
    SchemaCheck::refuseUnfit(*replayed);
}

/// The interviews of a study are nobody else's business, also where a link leads to a file that is yet to be made.
void makePrivateFile(const QString &path)
{
    if (!QFileInfo::exists(path)) // which looks behind a link, as QFile::exists doesn't always do
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
    return ApplicationFolder::prepared() + u"/vorn.sqlite"_s;
}

AppDatabase::AppDatabase() : dbQueue(openQueue(path()))
{
}

std::unique_ptr<DatabaseQueue> AppDatabase::openQueue(const QString &path)
{
    UnfinishedFile::visitCopy(path, refuseUnlessOurs);
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
