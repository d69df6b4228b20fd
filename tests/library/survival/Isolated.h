#pragma once

#include <QByteArrayList>
#include <QString>

#include <functional>

/// How something ended that was done in a process of its own.
struct Ending {
    QString result; ///< of what was done; empty when it ended badly
    std::string fault; ///< a signal, an exception or no answer in time; else empty
};

/// Does `body` in a copy of this process, which may crash or hang without harm to the test.
[[nodiscard]] Ending inProcessOfItsOwn(const std::function<QString()> &body);

/// Runs the statements on the database at `path` as a program that is killed behind the last of them.
void runAndBeKilled(const QString &path, const QByteArrayList &statements);
