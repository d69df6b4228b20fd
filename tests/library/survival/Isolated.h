#pragma once

#include <QByteArrayList>
#include <QString>

#include <functional>

/// Runs `body` in a copy of this process, which may crash or hang without harm to the test, and returns its result; if
/// there is none, "ended by " and a signal, an exception or an exit status.
[[nodiscard]] QString inProcessOfItsOwn(const std::function<QString()> &body);

/// Runs the statements on the database at `path` as a program that is killed after the last of them.
void runAndBeKilled(const QString &path, const QByteArrayList &statements);
