#include "platform/ChildProcess.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using ChildProcess::Result;

namespace {

Result runShell(const QString &script, qint64 outputLimit = 100'000'000)
{
    return ChildProcess::run({.program = u"/bin/sh"_s, .arguments = {u"-c"_s, script}, .outputLimit = outputLimit});
}

} // namespace

TEST(ChildProcess, GetsOutputLargerThanAPipesBufferThroughOnBothChannels)
{
    const Result result = runShell(u"head -c 3000000 /dev/zero >&2 & head -c 5000000 /dev/zero; wait; exit 7"_s);
    EXPECT_EQ(result.end, Result::End::exited);
    EXPECT_EQ(result.status, 7);
    EXPECT_EQ(result.output.size(), 5'000'000);
}

TEST(ChildProcess, EndsAProgramThatFloodsItsOutputOrMayNotGoOn)
{
    const Result result = runShell(u"exec cat /dev/zero"_s, 1'000'000);
    EXPECT_EQ(result.end, Result::End::stopped);
    EXPECT_EQ(result.output.size(), 1'000'000);
    EXPECT_FALSE(runShell(u"head -c 100001 /dev/zero"_s, 100'000).succeeded()); // though it ends by itself
    EXPECT_TRUE(runShell(u"head -c 100001 /dev/zero"_s, 100'001).succeeded());
    const Result unread = runShell(u"echo text"_s, 0);
    EXPECT_TRUE(unread.succeeded() && unread.output.isEmpty());
    const Result sleep =
        ChildProcess::run({.program = u"/bin/sleep"_s, .arguments = {u"600"_s}, .mayGoOn = [] { return false; }});
    EXPECT_EQ(sleep.end, Result::End::stopped);
}

TEST(ChildProcess, TellsAProgramThatCantStartFromOneThatFails)
{
    EXPECT_EQ(ChildProcess::run({.program = u"/no/such/program"_s, .arguments = {}}).end, Result::End::notStarted);
    EXPECT_EQ(runShell(u"kill -9 $$"_s).end, Result::End::crashed);
    EXPECT_TRUE(ChildProcess::run({.program = u"/bin/true"_s, .arguments = {}}).succeeded());
}

TEST(ChildProcess, PassesArgumentsUnreadByAnyShellAndKeepsAwayTheVariablesThatArchiversObey)
{
    const QByteArray before = qgetenv("LC_ALL");
    qputenv("LC_ALL", "POSIX");
    qputenv("UNZIP", "-l");
    const Result result = ChildProcess::run({.program = u"/bin/sh"_s,
        .arguments = {u"-c"_s, u"printf '%s|%s|%s|%s' \"$1\" \"$PWD\" \"$UNZIP\" \"$LC_ALL\""_s, u"sh"_s,
            u"a b'$(id)\"*é"_s},
        .workingDirectory = u"/usr"_s,
        .outputLimit = 1000});
    qunsetenv("UNZIP");
    before.isNull() ? qunsetenv("LC_ALL") : qputenv("LC_ALL", before);
    EXPECT_EQ(result.output, "a b'$(id)\"*é|/usr||C.UTF-8");
}
