#include "platform/StagingFolder.h"
#include "records/AppDatabase.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

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
