#include "platform/StagingFolder.h"
#include "records/AppDatabase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
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

/// From now on permissions can't be corrected behind the making of a file: what isn't private from its first moment
/// shows. Where the system can't forbid calls, only the outcome is looked at.
void forbidCorrections()
{
#ifdef Q_OS_LINUX
    constexpr auto refuse = SECCOMP_RET_ERRNO | EPERM;
    sock_filter rules[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
#ifdef __NR_chmod
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_chmod, 2, 0),
#else
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_fchmod, 2, 0),
#endif
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

/// The permission bits, in octal.
QString modeOf(const QString &path)
{
    struct stat status { };
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return u"missing"_s;
    return QString::number(status.st_mode & 0777, 8);
}

/// What makes a private file or folder in the folder that it is given, and says its permissions.
struct Secret {
    const char *name;
    QString (*mode)(const QString &folder);
    const char *expected;
};

class Privacy : public testing::TestWithParam<Secret> { };

} // namespace

TEST_P(Privacy, BeginsWithTheFile)
{
    const QTemporaryDir folder;
    qputenv("XDG_DATA_HOME", QFile::encodeName(folder.path()));
    std::fflush(nullptr);
    const pid_t process = ::fork(); // what is forbidden stays so
    if (process == 0) {
        ::umask(0);
        forbidCorrections();
        const QString mode = GetParam().mode(folder.path());
        if (mode != QLatin1StringView(GetParam().expected))
            std::fprintf(stderr, "permissions: %s\n", qPrintable(mode));
        ::_exit(mode == QLatin1StringView(GetParam().expected) ? 0 : 1);
    }
    int status = 0;
    ::waitpid(process, &status, 0);
    qunsetenv("XDG_DATA_HOME");
    EXPECT_EQ(status, 0);
}

INSTANTIATE_TEST_SUITE_P(, Privacy,
    testing::Values(
        Secret{"LibraryFolder", [](const QString &) { return modeOf(QFileInfo(AppDatabase::path()).path()); }, "700"},
        Secret{"Library",
            [](const QString &folder) {
                const auto queue = AppDatabase::openQueue(folder + u"/vorn.sqlite"_s);
                return modeOf(folder + u"/vorn.sqlite"_s);
            },
            "600"},
        Secret{"LibraryBehindALink",
            [](const QString &folder) {
                QFile::link(folder + u"/elsewhere.sqlite"_s, folder + u"/vorn.sqlite"_s);
                const auto queue = AppDatabase::openQueue(folder + u"/vorn.sqlite"_s);
                return modeOf(folder + u"/elsewhere.sqlite"_s);
            },
            "600"},
        Secret{"Journal",
            [](const QString &folder) {
                const auto queue = AppDatabase::openQueue(folder + u"/vorn.sqlite"_s);
                return queue->write([&](Database &database) {
                    database.execute("CREATE TABLE \"t\" (\"c\")");
                    return modeOf(folder + u"/vorn.sqlite-journal"_s);
                });
            },
            "600"},
        Secret{"StagingFolder",
            [](const QString &) {
                const StagingFolder staging(u"vorn-test-"_s);
                return modeOf(staging.path());
            },
            "700"}),
    [](const auto &row) { return row.param.name; });
