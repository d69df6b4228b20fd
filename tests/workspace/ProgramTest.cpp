#include "platform/AtomicFile.h"
#include "records/database/DatabaseQueue.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

struct Ending {
    int status;
    QString output;
    QString errors;
};

/// The built program itself, on a library in a folder of its own and, unless a platform of Qt is named, without a
/// display.
struct Program {
    QString platform = {};
    [[nodiscard]] QString path(const QString &name) const { return folder.filePath(name); }
    [[nodiscard]] QString libraryFile() const { return path(u"data/Vorn/vorn.sqlite"_s); }
    [[nodiscard]] Ending run(const QStringList &arguments) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString &variable : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s})
            environment.remove(variable);
        if (!platform.isEmpty())
            environment.insert(u"QT_QPA_PLATFORM"_s, platform);
        environment.insert(u"XDG_DATA_HOME"_s, path(u"data"_s));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(VORN_PROGRAM), arguments);
        process.waitForFinished(120'000);
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
    }

    QTemporaryDir folder = {};
};

} // namespace

TEST(Program, PrintsItsLinesAndNothingElseOnAFreshAndOnAnExistingLibrary)
{
    const Program program{.platform = u"none"_s}; // whoever wanted a window would fail
    const std::tuple<QStringList, QString, int> runs[]{
        {{u"--seed-demo"_s, u"--freq-test"_s}, u"FREQ-TEST terms=50\n"_s, 3},
        {{u"--query-test"_s}, u"QUERY-TEST any=3 all=1 filtered-phone=1\n"_s, 1}};
    for (const auto &[arguments, beginning, lines] : runs) {
        const Ending ending = program.run(arguments);
        EXPECT_EQ(ending.status, 0);
        EXPECT_EQ(ending.errors, QString());
        EXPECT_TRUE(ending.output.startsWith(beginning)) << ending.output.toStdString();
        EXPECT_EQ(ending.output.count(u'\n'), lines);
    }
    const QFile::Permissions ofOthers = QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther;
    for (const QString &path : {program.libraryFile(), program.path(u"data/Vorn"_s)})
        EXPECT_EQ(QFile::permissions(path) & ofOthers, QFile::Permissions()) << path.toStdString();
}

TEST(Program, SaysThatItNeedsADisplayWhenItsWindowIsWanted)
{
    const Program program;
    for (const QStringList &arguments : {QStringList{}, {u"--export-demo"_s}, {u"--seed-demo"_s, u"--query-sheet"_s}}) {
        const Ending ending = program.run(arguments);
        EXPECT_NE(ending.status, 0);
        EXPECT_EQ(ending.output + ending.errors, u"Vorn needs a display to show its window, and there is none.\n"_s);
    }
    EXPECT_FALSE(QFile::exists(program.libraryFile()));
}

TEST(Program, SaysWhyItCantOpenItsLibraryAndLeavesTheFileAlone)
{
    Program program;
    const auto expectRefusal = [&program](const QString &reason) {
        const QByteArray foreign = AtomicFile::readFile(program.libraryFile());
        const Ending ending = program.run({u"--freq-test"_s});
        EXPECT_EQ(ending.status, 1);
        EXPECT_EQ(ending.output, QString());
        EXPECT_TRUE(ending.errors.contains(reason)) << ending.errors.toStdString();
        EXPECT_EQ(AtomicFile::readFile(program.libraryFile()), foreign);
    };
    EXPECT_EQ(program.run({u"--seed-demo"_s, u"--freq-test"_s}).status, 0);
    DatabaseQueue(program.libraryFile()).write([](Database &database) {
        database.execute("UPDATE project SET createdAt = 'never'");
    });
    expectRefusal(u"The value of column “createdAt” can't be read: it isn't a date.\n"_s);
    AtomicFile::write(program.libraryFile(), "These are no pages of a database but a shopping list of some length.");
    expectRefusal(u"Vorn can't open its library.\n\nfile is not a database"_s);
    program.platform = u"offscreen"_s; // where a message box would wait for ever
    EXPECT_EQ(program.run({}).status, 1);
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
    const QString help = program.run({u"--help"_s}).output;
    for (const QString &line : help.split(u'\n'))
        EXPECT_LE(line.size(), 80) << line.toStdString();
    QString manual = QString::fromUtf8(AtomicFile::readFile(QStringLiteral(VORN_SOURCE "/packaging/vorn.1.in")));
    manual.remove(u'\\');
    static const QRegularExpression aSwitch(u"--[a-z]+(-[a-z]+)*"_s);
    for (auto found = aSwitch.globalMatch(help); found.hasNext();)
        EXPECT_TRUE(manual.contains(found.next().captured()));
}

TEST(Program, FailsWhereItsAnswerCantBeWritten)
{
    if (!QFile::exists(u"/dev/full"_s))
        GTEST_SKIP() << "no device that is always full";
    const QString question = u"'%1' --help > /dev/full"_s.arg(QStringLiteral(VORN_PROGRAM));
    EXPECT_EQ(QProcess::execute(u"/bin/sh"_s, {u"-c"_s, question}), 1);
}
