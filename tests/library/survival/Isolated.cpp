#include "library/survival/Isolated.h"

#include "platform/LocalizedError.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace {

/// Generous, since all tests may run at once under sanitizers: only what never ends takes so long.
constexpr rlim_t longestWork = 60; // seconds of a processor
constexpr unsigned longestWait = 300; // seconds

void say(int answer, const QByteArray &bytes)
{
    for (qsizetype said = 0; said < bytes.size();) {
        const ssize_t written = ::write(answer, bytes.constData() + said, size_t(bytes.size() - said));
        if (written < 0)
            return;
        said += written;
    }
}

[[noreturn]] void doIt(const std::function<QString()> &body, int answer)
{
    const rlimit work{longestWork, longestWork};
    ::setrlimit(RLIMIT_CPU, &work);
    ::alarm(longestWait);
    int status = EXIT_FAILURE;
    try {
        say(answer, body().toUtf8());
        status = EXIT_SUCCESS;
    } catch (const LocalizedError &error) {
        std::fprintf(stderr, "escaped: %s\n", qPrintable(error.description()));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "escaped: %s\n", error.what());
    }
    std::fflush(nullptr);
    ::_exit(status);
}

QByteArray heard(int answer)
{
    QByteArray bytes;
    char piece[4'096];
    for (ssize_t size = 0; (size = ::read(answer, piece, sizeof piece)) > 0;)
        bytes.append(piece, size);
    return bytes;
}

std::string faultOf(int status)
{
    if (WIFSIGNALED(status)) {
        const int signal = WTERMSIG(status);
        return signal == SIGALRM || signal == SIGXCPU || signal == SIGKILL ? "it took too long"
                                                                           : "signal " + std::to_string(signal);
    }
    return WEXITSTATUS(status) == EXIT_SUCCESS ? "" : "status " + std::to_string(WEXITSTATUS(status));
}

} // namespace

Ending inProcessOfItsOwn(const std::function<QString()> &body)
{
    int ends[2];
    if (::pipe(ends) != 0)
        throw std::runtime_error("no pipe");
    std::fflush(nullptr);
    const pid_t process = ::fork();
    if (process == 0) {
        ::close(ends[0]);
        doIt(body, ends[1]);
    }
    ::close(ends[1]);
    const QByteArray answer = heard(ends[0]);
    ::close(ends[0]);
    int status = 0;
    ::waitpid(process, &status, 0);
    const std::string fault = faultOf(status);
    return {fault.empty() ? QString::fromUtf8(answer) : QString(), fault};
}
