#include "library/survival/Operations.h"
#include "records/AppDatabase.h"
#include "support/NastyText.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// Starts a process that opens the library and does all operations, and kills it after `microseconds` of work. Returns
/// how many bytes it has written: one when the library was open, and one for each operation that was done.
int killedAtWork(const Workplace &place, useconds_t microseconds)
{
    int ends[2];
    if (::pipe(ends) != 0)
        throw std::runtime_error("no pipe");
    std::fflush(nullptr);
    const pid_t process = ::fork();
    if (process == 0) {
        TestLibrary library({}, AppDatabase::openQueue(place.libraryFile()));
        bool isHeard = ::write(ends[1], "+", 1) == 1;
        for (const Operation &operation : operations()) {
            operation.perform(library, place);
            isHeard = isHeard && ::write(ends[1], "+", 1) == 1;
        }
        ::pause();
    }
    ::usleep(microseconds);
    ::kill(process, SIGKILL);
    int status = 0;
    ::waitpid(process, &status, 0);
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
    ::close(ends[1]);
    char reports[100];
    const ssize_t count = ::read(ends[0], reports, sizeof reports);
    ::close(ends[0]);
    return int(count);
}

/// What the library holds before the first operation and after each of them.
QStringList digestsOfAllSteps(Workplace &place)
{
    TestLibrary library({}, place.restored());
    QStringList digests{digestOf(*library.queue)};
    for (const Operation &operation : operations()) {
        operation.perform(library, place);
        digests.append(digestOf(*library.queue));
    }
    return digests;
}

} // namespace

/// VORN_KILLS says how often, VORN_SEED where chance begins.
TEST(KilledProgram, LosesNothingThatWasDoneAndLeavesNothingHalf)
{
    const int kills = qEnvironmentVariableIsSet("VORN_KILLS") ? qEnvironmentVariableIntValue("VORN_KILLS") : 12;
    NastyText random(unsigned(qEnvironmentVariableIntValue("VORN_SEED")));
    Workplace place;
    const QStringList digests = digestsOfAllSteps(place);
    EXPECT_EQ(digests.size(), QSet<QString>(digests.begin(), digests.end()).size()) << "each operation writes";
    int unreported = 0;
    for (int kill = 0; kill < kills; ++kill) {
        SCOPED_TRACE(kill);
        place.restoreLibrary();
        const int reports = killedAtWork(place, useconds_t(random.number(0, 150'000)));
        const auto queue = AppDatabase::openQueue(place.libraryFile());
        EXPECT_EQ(faultsOf(*queue), QString());
        const QString found = digestOf(*queue);
        const bool isReported = found == digests.at(std::max(reports - 1, 0));
        EXPECT_TRUE(isReported || found == digests.value(reports)) << reports << " reports, found\n"
                                                                   << found.toStdString();
        unreported += isReported ? 0 : 1;
    }
    std::printf("%d kills, %d of them behind a write that wasn't reported yet\n", kills, unreported);
}
