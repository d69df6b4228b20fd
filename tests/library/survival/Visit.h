#pragma once

#include <QByteArrayList>
#include <QString>

/// Opens the library at `path` as a start of the program does and does with it all that a user can do, with files in
/// `folder`, in a copy of this process, which may crash or hang. Returns "refused: " and the reason, or "open", what
/// was wrong if something was, and in a second line what was seen at first: "documents | codes with their passages |
/// complaint"; or what ended the process.
[[nodiscard]] QString visit(const QString &path, const QString &folder);

/// Runs the statements on the database at `path` as a program that is killed after the last of them.
void runAndBeKilled(const QString &path, const QByteArrayList &statements);
