#include "library/survival/Isolated.h"

#include "records/database/DatabaseQueue.h"

#include <QTemporaryFile>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

QString inProcessOfItsOwn(const std::function<QString()> &body)
{
    QTemporaryFile answer;
    if (!answer.open())
        throw std::runtime_error("no temporary file");
    std::fflush(nullptr);
    const pid_t process = ::fork();
    if (process == 0) {
        constexpr unsigned maxSeconds = 100; // all tests may run at once under sanitizers
        ::alarm(maxSeconds);
        try {
            answer.write(body().toUtf8());
        } catch (const std::exception &error) {
            answer.write("ended by "_ba + error.what());
        }
        answer.flush();
        std::fflush(nullptr);
        ::_exit(EXIT_SUCCESS);
    }
    int status = 0;
    ::waitpid(process, &status, 0);
    if (status != 0)
        return u"ended by signal %1, status %2"_s.arg(WTERMSIG(status)).arg(WEXITSTATUS(status));
    answer.seek(0);
    return QString::fromUtf8(answer.readAll());
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
