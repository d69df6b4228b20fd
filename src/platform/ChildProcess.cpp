#include "platform/ChildProcess.h"

#include <QProcess>
#include <QProcessEnvironment>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace ChildProcess {

namespace {

constexpr int pollingInterval = 100; // milliseconds

/// The archivers take options from these variables, and escape names that their locale can't show.
QProcessEnvironment plainEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto &variable : {u"ZIP"_s, u"ZIPOPT"_s, u"UNZIP"_s, u"UNZIPOPT"_s, u"LANG"_s, u"LC_CTYPE"_s})
        environment.remove(variable);
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    return environment;
}

void leaveTerminal(QProcess &process)
{
#ifdef Q_OS_UNIX
    process.setChildProcessModifier([] { ::setsid(); });
#else
    Q_UNUSED(process)
#endif
}

/// Reads what has arrived so far; returns whether it exceeded the limit.
bool drain(QProcess &process, const Command &command, Result &result)
{
    process.readAllStandardError();
    const QByteArray output = process.readAllStandardOutput();
    if (command.outputLimit == 0)
        return false;
    const qint64 room = command.outputLimit - result.output.size();
    result.output += output.left(room);
    return output.size() > room;
}

} // namespace

Result run(const Command &command)
{
    QProcess process;
    process.setProcessEnvironment(plainEnvironment());
    process.setWorkingDirectory(command.workingDirectory);
    leaveTerminal(process);
    process.start(command.program, command.arguments, QIODevice::ReadOnly);
    process.closeWriteChannel();

    Result result;
    if (!process.waitForStarted(-1))
        return result;
    bool stopped = false;
    bool overflowing = false;
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process,
        [&] { overflowing = drain(process, command, result) || overflowing; });
    QObject::connect(&process, &QProcess::readyReadStandardError, &process, [&] { process.readAllStandardError(); });
    while (!process.waitForFinished(pollingInterval) && process.state() != QProcess::NotRunning) {
        if (!stopped && (overflowing || (command.mayGoOn && !command.mayGoOn()))) {
            stopped = true;
            process.kill();
        }
    }
    // The program may have written too much just before it ended.
    overflowing = drain(process, command, result) || overflowing;
    result.status = process.exitCode();
    result.end = stopped || overflowing               ? Result::End::stopped
        : process.exitStatus() == QProcess::CrashExit ? Result::End::crashed
                                                      : Result::End::exited;
    return result;
}

} // namespace ChildProcess
