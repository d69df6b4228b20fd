#pragma once

#include <QString>

#include <functional>

class DatabaseQueue;

/// A database in whose file SQLite has something to finish: a program was killed, and left a journal or a log.
namespace UnfinishedFile {

/// If the file at `path` is such a one, shows `look` a copy in which that is finished, and passes on what it throws: by
/// opening the file itself it would be changed before anybody knew whose it is. Does nothing when there is nothing to
/// finish, or no room for a copy. Throws DatabaseError when the copy can't be opened.
void visitCopy(const QString &path, const std::function<void(DatabaseQueue &copy)> &look);

} // namespace UnfinishedFile
