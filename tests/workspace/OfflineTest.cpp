#include <QtGlobal>

#ifdef Q_OS_LINUX

#include "BuiltProgram.h"

#include <gtest/gtest.h>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>

using namespace Qt::StringLiterals;

namespace {

/// From now on this process, and what it starts, is killed when it asks for a socket that may lead out of the machine.
bool forbidNetwork()
{
    sock_filter rules[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_socket, 0, 2),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args[0])),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, AF_UNIX, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
    };
    const sock_fprog program{std::size(rules), rules};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

constexpr int cantForbid = 99;

/// How a process ends that asks for a socket of this family.
int endOfAsking(int family)
{
    const pid_t process = ::fork();
    if (process == 0) {
        if (!forbidNetwork())
            ::_exit(cantForbid);
        ::_exit(::socket(family, SOCK_STREAM, 0) >= 0 ? 0 : 1);
    }
    int status = 0;
    ::waitpid(process, &status, 0);
    return status;
}

} // namespace

TEST(Offline, WorksAndShowsItsWindowWithoutAskingForTheNetwork)
{
    const int status = endOfAsking(AF_INET);
    if (WIFEXITED(status) && WEXITSTATUS(status) == cantForbid)
        GTEST_SKIP() << "this system can't forbid system calls";
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGSYS) << status; // the check isn't blind
    ASSERT_EQ(endOfAsking(AF_UNIX), 0);

    const BuiltProgram program;
    const auto prepare = [] {
        if (!forbidNetwork())
            ::_exit(cantForbid);
    };
    QProcess process;
    program.start(process, {u"--seed-demo"_s, u"--qdpx-test"_s, program.path(u"out"_s)}, {}, prepare);
    ASSERT_TRUE(process.waitForFinished(120'000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_FALSE(process.readAllStandardOutput().isEmpty());

    constexpr int whileItIsShown = 1'000; // milliseconds
    program.start(process, {u"--query-demo"_s}, u"offscreen"_s, prepare);
    ASSERT_TRUE(process.waitForStarted());
    EXPECT_FALSE(process.waitForFinished(whileItIsShown)) << process.exitCode();
    process.kill();
    process.waitForFinished();
}

#endif
