#include "BuiltProgram.h"
#include "platform/AtomicFile.h"
#include "records/database/DatabaseQueue.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

struct Ending {
    int status;
    QString output;
    QString errors;
};

class Program : public BuiltProgram {
public:
    QString platform; ///< Qt's, chosen by hand; empty for none

    [[nodiscard]] Ending run(const QStringList &arguments) const
    {
        QProcess process;
        start(process, arguments, platform);
        process.waitForFinished(120'000);
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
    }
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
    Program program;
    program.platform = u"none"_s; // whoever wanted a window would fail
    const auto printed = [&program](const QStringList &arguments) {
        const Ending ending = program.run(arguments);
        EXPECT_EQ(ending.status, 0);
        EXPECT_EQ(ending.errors, QString());
        return ending.output;
    };
    EXPECT_TRUE(isCount(printed({u"--seed-demo"_s, u"--freq-test"_s})));
    EXPECT_TRUE(isCount(printed({u"--freq-test"_s})));
    EXPECT_EQ(printed({u"--query-test"_s}), u"QUERY-TEST any=3 all=1 filtered-phone=1\n"_s);
    EXPECT_TRUE(printed({u"--qdpx-test"_s, program.path(u"out"_s)}).startsWith(u"QDPX-TEST OK "_s));
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
    const auto expectRefusal = [&program](const QString &reason) {
        const QByteArray foreign = AtomicFile::readFile(program.libraryFile());
        const Ending ending = program.run({u"--freq-test"_s});
        EXPECT_EQ(ending.status, 1);
        EXPECT_EQ(ending.output, QString());
        EXPECT_TRUE(ending.errors.contains(reason)) << ending.errors.toStdString();
        EXPECT_EQ(AtomicFile::readFile(program.libraryFile()), foreign);
    };
    AtomicFile::write(program.libraryFile(), "These are no pages of a database but a shopping list of some length.");
    expectRefusal(u"Vorn can't open its library.\n\nfile is not a database"_s);
    program.platform = u"offscreen"_s; // where a message box would wait for ever
    EXPECT_EQ(program.run({}).status, 1);
    program.platform.clear();

    QFile::remove(program.libraryFile());
    DatabaseQueue(program.libraryFile()).write([](Database &database) {
        database.execute("CREATE TABLE bookmarks (url TEXT)");
    });
    expectRefusal(u"The file isn't a library of Vorn: another program made it."_s);

    QFile::remove(program.libraryFile());
    std::ignore = program.run({u"--seed-demo"_s, u"--freq-test"_s});
    DatabaseQueue(program.libraryFile()).write([](Database &database) {
        database.execute("UPDATE project SET createdAt = 'never'");
    });
    expectRefusal(u"The value of column “createdAt” can't be read: it isn't a date.\n"_s);
}

TEST(Program, AnswersOnStandardOutputWithoutADisplayOrALibrary)
{
    const QString usage = u"Usage: vorn [SWITCH]..."_s;
    const QString version = u"Vorn " VORN_VERSION ""_s;
    const std::pair<QStringList, QString> questions[]{{{u"--help"_s}, usage}, {{u"--version"_s}, version},
        {{u"--seed-demo"_s, u"--freq-test"_s, u"--help"_s}, usage}, {{u"--nonsense"_s, u"--version"_s}, version}};
    const Program program;
    for (const auto &[arguments, firstLine] : questions) {
        const Ending ending = program.run(arguments);
        EXPECT_EQ(ending.status, 0);
        EXPECT_EQ(ending.output.section(u'\n', 0, 0), firstLine);
        EXPECT_TRUE(ending.output.endsWith(u'\n'));
        EXPECT_EQ(ending.errors, QString());
    }
    EXPECT_FALSE(QFile::exists(program.path(u"data"_s)));
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
    QString manual = QString::fromUtf8(AtomicFile::readFile(QStringLiteral(VORN_SOURCE "/packaging/vorn.1.in")));
    EXPECT_EQ(switchesIn(help), switchesIn(manual.remove(u'\\')));
    EXPECT_TRUE(switchesIn(help).contains(u"--freq-demo-term"_s));
}
