#include "records/schema/UnfinishedFile.h"

#include "platform/FileError.h"
#include "platform/StagingFolder.h"
#include "records/database/DatabaseError.h"
#include "records/database/DatabaseQueue.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString journalSuffix = u"-journal"_s;
const QString logSuffix = u"-wal"_s;

/// SQLite itself says whether a journal is to be rolled back, or belongs to a program that is at work.
bool needsRollback(const QString &file)
{
    if (QFileInfo(file + journalSuffix).size() == 0)
        return false;
    Configuration reading;
    reading.readonly = true;
    try {
        const DatabaseQueue reader(file, reading);
    } catch (const DatabaseError &error) {
        return error.code() == SQLITE_READONLY_ROLLBACK;
    }
    return false;
}

bool isUnfinished(const QString &file)
{
    // A log can't even be asked for without changing what lies beside the file.
    return QFile::exists(file + logSuffix) || needsRollback(file);
}

/// The file first: what is written meanwhile stands in the others before it does in the file.
bool copy(const QString &file, const QString &target)
{
    const QStringList companions{logSuffix, journalSuffix};
    return QFile::copy(file, target) && std::ranges::all_of(companions, [&](const QString &suffix) {
        return !QFile::exists(file + suffix) || QFile::copy(file + suffix, target + suffix);
    });
}

bool isLackOfRoom(const DatabaseError &error)
{
    constexpr int kind = 0xFF; // without what is special about it
    return (error.code() & kind) == SQLITE_FULL || (error.code() & kind) == SQLITE_IOERR;
}

} // namespace

void UnfinishedFile::visitCopy(const QString &path, const std::function<void(DatabaseQueue &copy)> &look)
{
    // The companions of a file lie beside it, not beside a link to it. A pipe would keep us waiting.
    const QFileInfo file(QFileInfo(path).canonicalFilePath());
    if (!file.isFile() || !isUnfinished(file.filePath()))
        return;
    try {
        const StagingFolder folder(u"vorn-library-"_s);
        const QString target = folder.path(u"copy.sqlite"_s);
        if (!copy(file.filePath(), target))
            return;
        DatabaseQueue finished(target);
        look(finished);
    } catch (const FileError &) {
        // No folder for a copy. Our own library must open even so.
    } catch (const DatabaseError &error) {
        if (!isLackOfRoom(error))
            throw;
    }
}
