#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

/// Runs another program to its end: by absolute path, with a list of arguments, without a shell, with both of its
/// outputs drained and without a terminal that it could ask for a password.
namespace ChildProcess {

struct Command {
    QString program; ///< absolute path
    QStringList arguments;
    QString workingDirectory = {}; ///< empty: that of this process
    /// Bytes of standard output to keep. A program that writes more is ended. 0 keeps nothing and ends nothing.
    qint64 outputLimit = 0;
    /// Asked now and then while the program runs; the program is ended when it answers false.
    std::function<bool()> mayGoOn = {};
};

struct Result {
    enum class End {
        notStarted, ///< no such program, or it can't be run
        exited, ///< by itself, with `status`
        crashed, ///< by a signal of its own making
        stopped, ///< by us: too much output, or `mayGoOn` said no
    };

    End end = End::notStarted;
    int status = -1;
    QByteArray output; ///< standard output, at most `Command::outputLimit` bytes

    [[nodiscard]] bool succeeded() const noexcept { return end == End::exited && status == 0; }
};

/// Blocks until the program has ended. Its standard error is drained and dropped.
[[nodiscard]] Result run(const Command &command);

} // namespace ChildProcess
