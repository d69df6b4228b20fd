#include "library/CommandLine.h"
#include "library/CommandLineHelp.h"
#include "platform/LocalizedError.h"
#include "platform/StagingFolder.h"
#include "records/AppDatabase.h"
#include "workspace/DisplayChoice.h"
#include "workspace/VornApp.h"

#include <QApplication>
#include <QDir>
#include <QMessageBox>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

const QString version = QStringLiteral(VORN_VERSION);

QStringList argumentsOf(int argc, char **argv)
{
    QStringList arguments;
    for (int index = 1; index < argc; ++index)
        arguments.append(QString::fromLocal8Bit(argv[index]));
    return arguments;
}

/// Whether all of the line could be written.
bool print(const QString &line, std::FILE *stream)
{
    return std::fputs((line + u'\n').toUtf8().constData(), stream) >= 0 && std::fflush(stream) == 0;
}

/// What is asked about the program itself: to be said without a display, and before there is a library.
std::optional<QString> answerTo(const CommandLine &commandLine)
{
    if (commandLine.has(CommandLine::help))
        return CommandLineHelp::text();
    if (commandLine.has(CommandLine::version))
        return u"Vorn "_s + version;
    return {};
}

/// Where files may have only a certain size, a write beyond it is a failure to tell, and no reason to be killed.
void surviveFileSizeLimit()
{
#ifdef SIGXFSZ
    (void)std::signal(SIGXFSZ, SIG_IGN); // which can't fail for a signal that exists
#endif
}

/// Whether somebody can read a message box and close it.
bool isWatched(const CommandLine &commandLine)
{
    const QString platform = QGuiApplication::platformName();
    return !commandLine.quits() && platform != u"offscreen" && platform != u"minimal";
}

/// Without its database the program can't go on: it says why and stops.
int refuseToStart(const LocalizedError &error, const CommandLine &commandLine)
{
    const QString message = u"Vorn can't open its library.\n\n"_s + error.description()
        + u"\n\nNo document, code or passage in it was changed. The library is the file "_s
        + QDir::toNativeSeparators(AppDatabase::path());
    print(message, stderr);
    if (isWatched(commandLine))
        QMessageBox::critical(nullptr, u"Vorn"_s, message);
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char **argv)
{
    const QStringList arguments = argumentsOf(argc, argv);
    const CommandLine commandLine(arguments);
    if (const std::optional<QString> answer = answerTo(commandLine))
        return print(*answer, stdout) ? EXIT_SUCCESS : EXIT_FAILURE;
    const DisplayChoice display = chooseDisplay(commandLine);
    if (display == DisplayChoice::impossible) {
        print(u"Vorn needs a display to show its window, and there is none."_s, stderr);
        return EXIT_FAILURE;
    }
    if (display == DisplayChoice::offscreen)
        qputenv("QT_QPA_PLATFORM", "offscreen");

    surviveFileSizeLimit();
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Vorn"_s);
    QApplication::setApplicationVersion(version);
    QApplication::setDesktopFileName(u"vorn"_s);
    StagingFolder::removeAbandoned(u"vorn-qdpx-"_s); // of programs that were killed
    try {
        DatabaseQueue &queue = *AppDatabase::shared().dbQueue;
        return VornApp(queue, arguments).run();
    } catch (const LocalizedError &error) {
        return refuseToStart(error, commandLine);
    }
}
