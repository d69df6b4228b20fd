#include "library/survival/Workplace.h"
#include "records/AppDatabase.h"
#include "support/NastyText.h"

#include <QFileInfo>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// Starts a process that opens the library and does all operations, and kills it after `microseconds` of work. Returns
/// how many steps it has reported: the opening, and each operation that was done.
qsizetype killedAtWork(const Workplace &place, useconds_t microseconds)
{
    QFile reports(place.exports() + u"/reports"_s);
    if (!reports.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw std::runtime_error("no file for the reports");
    std::fflush(nullptr);
    const pid_t process = ::fork();
    if (process == 0) {
        TestLibrary library({}, AppDatabase::openQueue(place.libraryFile()));
        reports.write("+");
        for (const Operation &operation : operations()) {
            operation.perform(library, place);
            reports.write("+");
        }
        ::pause();
    }
    ::usleep(microseconds);
    ::kill(process, SIGKILL);
    int status = 0;
    ::waitpid(process, &status, 0);
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
    return QFileInfo(reports.fileName()).size();
}

} // namespace

TEST(KilledProgram, LosesNothingThatWasDoneAndLeavesNothingHalf)
{
    Workplace place;
    QStringList digests; // before the first operation and after each of them
    {
        TestLibrary library({}, place.restored());
        digests.append(digestOf(*library.queue));
        for (const Operation &operation : operations()) {
            operation.perform(library, place);
            digests.append(digestOf(*library.queue));
        }
    }
    NastyText random(1);
    for (int kill = 0; kill < 12; ++kill) {
        SCOPED_TRACE(kill);
        place.restoreLibrary();
        const qsizetype reports = killedAtWork(place, useconds_t(random.number(0, 150'000)));
        const auto queue = AppDatabase::openQueue(place.libraryFile());
        EXPECT_EQ(faultsOf(*queue), QString());
        const QString found = digestOf(*queue);
        EXPECT_TRUE(found == digests.at(std::max<qsizetype>(reports - 1, 0)) || found == digests.value(reports))
            << reports << " reports, found\n"
            << found.toStdString();
    }
}
