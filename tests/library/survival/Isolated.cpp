#include "library/survival/Isolated.h"

#include "platform/LocalizedError.h"
#include "records/database/DatabaseQueue.h"

#include <QTemporaryFile>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void perform(const std::function<QString()> &body, QFile &answer)
{
    constexpr unsigned longestWait = 100; // seconds; generous, since all tests may run at once under sanitizers
    ::alarm(longestWait);
    int status = EXIT_FAILURE;
    try {
        answer.write(body().toUtf8());
        status = answer.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const LocalizedError &error) {
        std::fprintf(stderr, "escaped: %s\n", qPrintable(error.description()));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "escaped: %s\n", error.what());
    }
    std::fflush(nullptr);
    ::_exit(status);
}

} // namespace

Ending inProcessOfItsOwn(const std::function<QString()> &body)
{
    QTemporaryFile answer;
    if (!answer.open())
        throw std::runtime_error("no temporary file");
    std::fflush(nullptr);
    const pid_t process = ::fork();
    if (process == 0)
        perform(body, answer);
    int status = 0;
    ::waitpid(process, &status, 0);
    if (WIFSIGNALED(status))
        return {{}, "signal " + std::to_string(WTERMSIG(status))};
    if (WEXITSTATUS(status) != EXIT_SUCCESS)
        return {{}, "status " + std::to_string(WEXITSTATUS(status))};
    answer.seek(0);
    return {QString::fromUtf8(answer.readAll()), ""};
}

void runAndBeKilled(const QString &path, const QByteArrayList &statements)
{
    std::ignore = inProcessOfItsOwn([&]() -> QString {
        DatabaseQueue queue(path);
        queue.writeWithoutTransaction([&](Database &database) {
            for (const QByteArray &statement : statements)
                database.execute(statement);
            ::_exit(EXIT_SUCCESS);
        });
        return {};
    });
}
