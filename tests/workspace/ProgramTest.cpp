#include "platform/AtomicFile.h"
#include "records/database/DatabaseQueue.h"
#include "support/Cases.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

struct Ending {
    int status;
    QString output;
    QString errors;
};

/// The built program itself, on a library in a folder of its own and without a display.
class Program {
public:
    QString platform; ///< Qt's, chosen by hand; empty for none

    /// `prepare` is called in the new process.
    [[nodiscard]] Ending run(const QStringList &arguments, const std::function<void()> &prepare = {}) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const auto &variable : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s})
            environment.remove(variable);
        if (!platform.isEmpty())
            environment.insert(u"QT_QPA_PLATFORM"_s, platform);
        environment.insert(u"XDG_DATA_HOME"_s, m_folder.filePath(u"data"_s));
        environment.insert(u"LANG"_s, u"C.UTF-8"_s);
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setChildProcessModifier(prepare);
        process.start(QStringLiteral(VORN_PROGRAM), arguments);
        process.waitForFinished(120'000);
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
    }
    [[nodiscard]] QString libraryFile() const { return m_folder.filePath(u"data/Vorn/vorn.sqlite"_s); }
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
};

QSet<QString> switchesIn(const QString &text)
{
    static const QRegularExpression name(u"--[a-z]+(-[a-z]+)*"_s);
    QSet<QString> names;
    for (auto match = name.globalMatch(text); match.hasNext();)
        names.insert(match.next().captured());
    return names;
}

/// Whether these are the lines of the count of the sample content, and nothing else.
bool isCount(const QString &output)
{
    return output.startsWith(u"FREQ-TEST terms=50\nFREQ-TEST top: 分钟:4  ") && output.count(u'\n') == 3;
}

} // namespace

TEST(Program, PrintsItsLinesAndNothingElseOnAFreshAndOnAnExistingLibrary)
{
    const Program program;
    EXPECT_TRUE(isCount(program.run({u"--seed-demo"_s, u"--freq-test"_s}).output));
    EXPECT_TRUE(isCount(program.run({u"--freq-test"_s}).output));
    EXPECT_TRUE(program.run({u"--qdpx-test"_s, program.path(u"out"_s)}).output.startsWith(u"QDPX-TEST OK "_s));
    EXPECT_EQ(QFile::permissions(program.libraryFile()) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    EXPECT_EQ(
        QFile::permissions(program.path(u"data/Vorn"_s)) & (QFile::ReadGroup | QFile::ExeOther), QFile::Permissions());
}

TEST(Program, SaysThatItNeedsADisplayWhenItsWindowIsWanted)
{
    const Program program;
    for (const QStringList &arguments : {QStringList{}, {u"--export-demo"_s}, {u"--seed-demo"_s, u"--query-sheet"_s}}) {
        const Ending ending = program.run(arguments);
        EXPECT_NE(ending.status, 0);
        EXPECT_EQ(ending.output, QString());
        EXPECT_EQ(ending.errors, u"Vorn needs a display to show its window, and there is none.\n"_s);
    }
    EXPECT_FALSE(QFile::exists(program.libraryFile()));
}

TEST(Program, SaysWhyItCantOpenItsLibraryAndLeavesTheFileAlone)
{
    Program program;
    QDir().mkpath(program.path(u"data/Vorn"_s));
    const QByteArray foreign = "These are no pages of a database but a shopping list, kept under a strange name.";
    AtomicFile::write(program.libraryFile(), foreign);
    const Ending ending = program.run({u"--freq-test"_s});
    EXPECT_NE(ending.status, 0);
    EXPECT_EQ(ending.output, QString());
    EXPECT_TRUE(ending.errors.contains(u"Vorn can't open its library.\n\nfile is not a database"_s));
    EXPECT_EQ(AtomicFile::read(program.libraryFile()), foreign);
    program.platform = u"offscreen"_s; // where a message box would wait for ever
    EXPECT_EQ(program.run({}).status, 1);

    QFile::remove(program.libraryFile());
    DatabaseQueue(program.libraryFile()).write([](Database &database) {
        database.execute("CREATE TABLE bookmarks (url TEXT)");
    });
    const QByteArray bookmarks = AtomicFile::read(program.libraryFile());
    EXPECT_TRUE(program.run({u"--freq-test"_s})
                    .errors.contains(u"The file isn't a library of Vorn: another program made it."_s));
    EXPECT_EQ(AtomicFile::read(program.libraryFile()), bookmarks);

    QFile::remove(program.libraryFile());
    QDir(program.path(u"data"_s)).rmdir(u"Vorn"_s);
    AtomicFile::write(program.path(u"data/Vorn"_s), "a file where the folder should be");
    EXPECT_TRUE(program.run({u"--freq-test"_s}).errors.contains(u"unable to open database file"_s));
}

TEST(Program, EndsWithItsReasonWhereItCantBeginAndNobodyWaits)
{
    const Program program;
    std::ignore = program.run({u"--seed-demo"_s, u"--freq-test"_s});
    DatabaseQueue(program.libraryFile()).write([](Database &database) {
        database.execute("UPDATE project SET createdAt = 'never'");
    });
    const Ending ending = program.run({u"--freq-test"_s});
    EXPECT_EQ(ending.status, 1);
    EXPECT_EQ(ending.output, QString());
    EXPECT_TRUE(ending.errors.contains(u"The value of column “createdAt” can't be read: it isn't a date.\n"_s));
}

struct Question {
    const char *name;
    QStringList arguments;
    QString firstLine;
};

using AskedProgram = testing::TestWithParam<Question>;

TEST_P(AskedProgram, AnswersOnStandardOutputWithoutADisplayOrALibrary)
{
    const Program program;
    const Ending ending = program.run(GetParam().arguments);
    EXPECT_EQ(ending.status, 0);
    EXPECT_EQ(ending.output.section(u'\n', 0, 0), GetParam().firstLine);
    EXPECT_TRUE(ending.output.endsWith(u'\n'));
    EXPECT_EQ(ending.errors, QString());
    EXPECT_FALSE(QFile::exists(program.path(u"data"_s)));
}

INSTANTIATE_TEST_SUITE_P(Program, AskedProgram,
    testing::Values(Question{"help_wants_a_display", {u"--help"_s}, u"Usage: vorn [SWITCH]..."_s},
        Question{"version_differs_from_the_build", {u"--version"_s}, u"Vorn " VORN_VERSION ""_s},
        Question{"help_opens_the_library_first", {u"--seed-demo"_s, u"--freq-test"_s, u"--help"_s},
            u"Usage: vorn [SWITCH]..."_s},
        Question{"unknown_switch_silences_the_version", {u"--nonsense"_s, u"--version"_s}, u"Vorn " VORN_VERSION ""_s}),
    rowName);

TEST(Program, SaysThatItsFirstLibraryFindsNoRoomAndMakesItWhenThereIsSome)
{
    const Program program;
    const Ending ending = program.run({u"--seed-demo"_s, u"--freq-test"_s}, [] {
        const rlimit nothing{0, RLIM_INFINITY};
        ::setrlimit(RLIMIT_FSIZE, &nothing);
    });
    EXPECT_EQ(ending.status, 1);
    EXPECT_TRUE(ending.errors.contains(u"Vorn can't open its library.\n\ndisk I/O error - while "_s))
        << ending.errors.toStdString();
    EXPECT_TRUE(isCount(program.run({u"--seed-demo"_s, u"--freq-test"_s}).output));
}

TEST(Program, FailsWhereItsAnswerCantBeWritten)
{
    if (!QFile::exists(u"/dev/full"_s))
        GTEST_SKIP() << "no device that is always full";
    for (const auto &question : {u" --help"_s, u" --version"_s})
        EXPECT_EQ(QProcess::execute(u"/bin/sh"_s,
                      {u"-c"_s, u'\'' + QStringLiteral(VORN_PROGRAM) + u'\'' + question + u" > /dev/full"_s}),
            1);
}

TEST(Program, IsHelpfulInLinesThatFitATerminalAndTellTheSameAsTheManual)
{
    const QString help = Program().run({u"--help"_s}).output;
    for (const QString &line : help.split(u'\n'))
        EXPECT_LE(line.size(), 80) << line.toStdString();
    QString manual = QString::fromUtf8(AtomicFile::read(QStringLiteral(VORN_SOURCE "/packaging/vorn.1.in")));
    EXPECT_EQ(switchesIn(help), switchesIn(manual.remove(u'\\')));
    EXPECT_TRUE(switchesIn(help).contains(u"--freq-demo-term"_s));
}
