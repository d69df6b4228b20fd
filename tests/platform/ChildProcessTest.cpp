#include "platform/ChildProcess.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using ChildProcess::Result;

namespace {

ChildProcess::Command shell(const QString &script)
{
    return {.program = u"/bin/sh"_s, .arguments = {u"-c"_s, script}, .outputLimit = 100'000'000};
}

} // namespace

TEST(ChildProcess, GetsOutputLargerThanAPipesBufferThroughOnBothChannels)
{
    const Result result =
        ChildProcess::run(shell(u"head -c 3000000 /dev/zero >&2 & head -c 5000000 /dev/zero; wait; exit 7"_s));
    EXPECT_EQ(result.end, Result::End::exited);
    EXPECT_EQ(result.status, 7);
    EXPECT_EQ(result.output.size(), 5'000'000);
}

TEST(ChildProcess, EndsAProgramThatFloodsItsOutput)
{
    ChildProcess::Command command = shell(u"exec cat /dev/zero"_s);
    command.outputLimit = 1'000'000;
    const Result result = ChildProcess::run(command);
    EXPECT_EQ(result.end, Result::End::stopped);
    EXPECT_EQ(result.output.size(), 1'000'000);
}

TEST(ChildProcess, NeverTakesCutOutputForTheWholeOfIt)
{
    ChildProcess::Command command = shell(u"head -c 100001 /dev/zero"_s); // ends at once, by itself
    command.outputLimit = 100'000;
    EXPECT_FALSE(ChildProcess::run(command).succeeded());
    command.outputLimit = 100'001;
    EXPECT_TRUE(ChildProcess::run(command).succeeded());
}

TEST(ChildProcess, EndsAProgramThatMayNotGoOn)
{
    ChildProcess::Command command = shell(u"exec sleep 600"_s);
    command.mayGoOn = [] { return false; };
    EXPECT_EQ(ChildProcess::run(command).end, Result::End::stopped);
}

TEST(ChildProcess, TellsAProgramThatCantStartFromOneThatFails)
{
    EXPECT_EQ(ChildProcess::run({.program = u"/no/such/program"_s, .arguments = {}}).end, Result::End::notStarted);
    EXPECT_EQ(ChildProcess::run({.program = u"/bin/sh"_s, .arguments = {u"-c"_s, u"kill -9 $$"_s}}).end,
        Result::End::crashed);
    EXPECT_TRUE(ChildProcess::run({.program = u"/bin/true"_s, .arguments = {}}).succeeded());
}

TEST(ChildProcess, PassesArgumentsUnreadByAnyShellAndKeepsAwayTheVariablesThatArchiversObey)
{
    qputenv("UNZIP", "-l");
    const Result result = ChildProcess::run({.program = u"/bin/sh"_s,
        .arguments = {u"-c"_s, u"printf '%s|%s|%s' \"$1\" \"$PWD\" \"$UNZIP\""_s, u"sh"_s, u"a b'$(id)\"*é"_s},
        .workingDirectory = u"/usr"_s,
        .outputLimit = 1000});
    qunsetenv("UNZIP");
    EXPECT_EQ(result.output, "a b'$(id)\"*é|/usr|");
}
