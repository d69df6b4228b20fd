#include "platform/StagingFolder.h"
#include "records/AppDatabase.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

#ifdef Q_OS_LINUX
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <cerrno>
#include <cstddef>
#endif

using namespace Qt::StringLiterals;

namespace {

/// From now on permissions can't be corrected after a file was made: what isn't private from its first moment shows.
/// Where the system can't forbid calls, only the outcome is looked at.
void forbidCorrections()
{
#ifdef Q_OS_LINUX
    constexpr auto refuse = SECCOMP_RET_ERRNO | EPERM;
#ifdef __NR_chmod
    constexpr auto chmodCall = __NR_chmod;
#else
    constexpr auto chmodCall = __NR_fchmod; // the system has no other
#endif
    sock_filter rules[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, chmodCall, 2, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_fchmod, 1, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_fchmodat, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, refuse),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{std::size(rules), rules};
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program);
#endif
}

void printMode(const QString &path)
{
    struct stat status { };
    ::stat(QFile::encodeName(path).constData(), &status);
    std::fprintf(stderr, "%o ", status.st_mode & 0777U);
}

/// Makes everything that must be private, and prints the permissions: first those of two folders.
[[noreturn]] void makeAndPrint(const QString &folder)
{
    ::umask(0);
    forbidCorrections();
    printMode(QFileInfo(AppDatabase::path()).path());
    printMode(StagingFolder(u"vorn-test-"_s).path());
    const QString library = folder + u"/library.sqlite"_s;
    AppDatabase::openQueue(library)->write([&](Database &database) {
        database.execute("CREATE TABLE \"t\" (\"c\")");
        printMode(library);
        printMode(library + u"-journal"_s);
    });
    QFile::link(folder + u"/elsewhere.sqlite"_s, folder + u"/link.sqlite"_s);
    const auto queue = AppDatabase::openQueue(folder + u"/link.sqlite"_s);
    printMode(folder + u"/elsewhere.sqlite"_s);
    ::_exit(0);
}

} // namespace

TEST(Privacy, BeginsWithTheFile)
{
    const QTemporaryDir folder;
    qputenv("XDG_DATA_HOME", QFile::encodeName(folder.path()));
    EXPECT_EXIT(makeAndPrint(folder.path()), testing::ExitedWithCode(0), "^700 700 600 600 600 $");
    qunsetenv("XDG_DATA_HOME");
}
