#include "library/survival/LibraryDigest.h"
#include "library/survival/Researcher.h"
#include "platform/AtomicFile.h"
#include "records/AppDatabase.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// A process that works on the library at `path`, step after step, until it is killed. It writes a byte into its pipe
/// when the library is open, and one for each step that is done.
class Worker {
public:
    Worker(const QString &path, const QString &folder, unsigned seed, int firstStep)
    {
        int ends[2];
        if (::pipe(ends) != 0)
            throw std::runtime_error("no pipe");
        m_reports = ends[0];
        std::fflush(nullptr);
        m_process = ::fork();
        if (m_process == 0)
            work(path, folder, seed, firstStep, ends[1]);
        ::close(ends[1]);
    }
    ~Worker() { ::close(m_reports); }
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    /// Waits for so many reports, then for so long.
    void letWork(int reports, useconds_t microseconds)
    {
        while (m_reported < reports && takeReport()) { }
        ::usleep(microseconds);
    }
    /// Returns whether it was still at work.
    [[nodiscard]] bool kill()
    {
        ::kill(m_process, SIGKILL);
        int status = 0;
        ::waitpid(m_process, &status, 0);
        while (takeReport()) { }
        return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    }
    [[nodiscard]] int reported() const { return m_reported; }

private:
    [[noreturn]] static void work(const QString &path, const QString &folder, unsigned seed, int firstStep, int reports)
    {
        try {
            TestLibrary library({}, AppDatabase::openQueue(path));
            Researcher researcher(library, folder, seed);
            for (int step = firstStep; ::write(reports, "+", 1) == 1; ++step)
                researcher.work(step);
        } catch (...) {
        }
        ::_exit(EXIT_FAILURE);
    }

    bool takeReport()
    {
        char byte = 0;
        if (::read(m_reports, &byte, 1) != 1)
            return false;
        ++m_reported;
        return true;
    }

    pid_t m_process = 0;
    int m_reports = 0;
    int m_reported = 0;
};

QSet<QString> lineSet(const QString &text)
{
    const QStringList lines = text.split(u'\n');
    return {lines.begin(), lines.end()};
}

/// Where the kills struck, to see that they strike everywhere.
struct Tally {
    int kills = 0;
    int duringStart = 0;
    int withHotJournal = 0;
    int unreportedButWhole = 0;
    int betweenFiles = 0;
};

/// One library, killed again and again, beside one in memory that goes the same way undisturbed.
class KilledLibrary {
public:
    KilledLibrary(unsigned seed, Tally &tally)
        : m_seed(seed),
          m_tally(tally),
          m_random(seed),
          m_researcher(m_undisturbed, m_otherFolder.path(), seed)
    {
        qputenv("TMPDIR", QFile::encodeName(m_folder.path())); // what a killed process leaves goes with the test
    }
    ~KilledLibrary() { qputenv("TMPDIR", m_temporary); }
    KilledLibrary(const KilledLibrary &) = delete;
    KilledLibrary &operator=(const KilledLibrary &) = delete;

    /// Returns false when there is nothing to compare with any more.
    [[nodiscard]] bool strike()
    {
        Worker worker(m_path, m_folder.path(), m_seed, m_step);
        // A step takes from tens of microseconds in memory to tens of milliseconds on a slow disk.
        static constexpr useconds_t longest[] = {100, 1'000, 3'000, 10'000, 30'000};
        worker.letWork(m_random.number(0, 6), useconds_t(m_random.number(0, int(longest[m_random.number(0, 4)]))));
        EXPECT_TRUE(worker.kill()) << "the worker ended by itself";
        ++m_tally.kills;
        expectWholeReport();
        m_tally.withHotJournal += QFileInfo(m_path + u"-journal"_s).size() > 0 ? 1 : 0;
        return compare(worker.reported());
    }

private:
    void expectWholeReport() const
    {
        const QString report = Researcher::reportIn(m_folder.path());
        if (QFile::exists(report)) {
            EXPECT_TRUE(AtomicFile::readFile(report).endsWith("</html>")) << where();
        }
    }

    bool compare(int reported)
    {
        const std::unique_ptr<DatabaseQueue> queue = AppDatabase::openQueue(m_path);
        EXPECT_EQ(faultsOf(*queue), QString()) << where();
        const QString found = digestOf(*queue);
        if (reported == 0 && m_step == 0 && found.isEmpty()) {
            ++m_tally.duringStart;
            return true;
        }
        m_tally.duringStart += reported == 0 ? 1 : 0;
        for (int done = 1; done < reported; ++done)
            m_researcher.work(m_step++);
        const QString before = digestOf(*m_undisturbed.queue);
        if (found == before)
            return true;
        const qsizetype importSteps = m_undisturbed.steps.size();
        m_researcher.work(m_step++);
        const QString after = digestOf(*m_undisturbed.queue);
        if (found == after) {
            ++m_tally.unreportedButWhole;
            return true;
        }
        // Of several files, each is a transaction: some may be there, each of them whole.
        const bool severalFiles = m_undisturbed.steps.size() - importSteps > 1;
        const bool someOfThem = lineSet(found).contains(lineSet(before)) && lineSet(after).contains(lineSet(found));
        EXPECT_TRUE(severalFiles && someOfThem) << where() << "\nfound\n"
                                                << found.toStdString() << "\nbefore\n"
                                                << before.toStdString() << "\nafter\n"
                                                << after.toStdString();
        ++m_tally.betweenFiles;
        return false;
    }

    [[nodiscard]] std::string where() const
    {
        return "seed " + std::to_string(m_seed) + ", step " + std::to_string(m_step);
    }

    const QByteArray m_temporary = qgetenv("TMPDIR");
    const unsigned m_seed;
    Tally &m_tally;
    NastyText m_random;
    QTemporaryDir m_folder;
    QTemporaryDir m_otherFolder; ///< of the undisturbed one
    const QString m_path = m_folder.filePath(u"vorn.sqlite"_s);
    int m_step = 0; ///< the next one
    TestLibrary m_undisturbed;
    Researcher m_researcher;
};

int parameter(const char *name, int usual)
{
    const int given = qEnvironmentVariableIntValue(name);
    return given > 0 ? given : usual;
}

} // namespace

/// VORN_KILLS says how often, VORN_SEED where chance begins; TMPDIR says on which disk.
TEST(KilledProgram, LosesNothingThatWasDoneAndLeavesNothingHalf)
{
    constexpr int killsOfOneLibrary = 25;
    Tally tally;
    const int kills = parameter("VORN_KILLS", 60);
    for (unsigned seed = unsigned(parameter("VORN_SEED", 1)); tally.kills < kills && !HasFailure(); ++seed) {
        KilledLibrary library(seed, tally);
        for (int strike = 0; strike < killsOfOneLibrary && tally.kills < kills && !HasFailure(); ++strike) {
            if (!library.strike())
                break;
        }
    }
    std::printf("%d kills: %d while starting, %d with a journal to roll back, %d behind a write that wasn't reported "
                "yet, %d between the files of an import\n",
        tally.kills, tally.duringStart, tally.withHotJournal, tally.unreportedButWhole, tally.betweenFiles);
    EXPECT_EQ(tally.kills, kills);
}
