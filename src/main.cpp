#include "library/CommandLine.h"
#include "library/LibraryStore.h"
#include "library/SelfTests.h"
#include "platform/FileDialogs.h"
#include "platform/LocalizedError.h"
#include "platform/StagingFolder.h"
#include "records/AppDatabase.h"
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

/// Returns whether the whole line could be written. A line may hold NUL.
bool print(const QString &line, std::FILE *stream)
{
    const QByteArray bytes = (line + u'\n').toUtf8();
    const auto size = size_t(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stream) == size && std::fflush(stream) == 0;
}

/// What is asked about the program itself: answered without a display, and before there is a library.
std::optional<QString> answerTo(const CommandLine &commandLine)
{
    if (commandLine.has(CommandLine::help))
        return CommandLine::helpText();
    if (commandLine.has(CommandLine::version))
        return u"Vorn "_s + version;
    return {};
}

/// Where files may have only a certain size, a write beyond it is to fail and not to kill the program.
void surviveFileSizeLimit()
{
#ifdef SIGXFSZ
    (void)std::signal(SIGXFSZ, SIG_IGN); // which can't fail for a signal that exists
#endif
}

bool hasDisplay()
{
#if defined(Q_OS_LINUX) || defined(Q_OS_FREEBSD)
    // A platform that was chosen by hand knows what it shows itself on.
    return !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY")
        || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#else
    return true;
#endif
}

/// Whether somebody can read a message box and close it.
bool isWatched()
{
    const QString platform = QGuiApplication::platformName(); // empty without an application that shows anything
    return !platform.isEmpty() && platform != u"offscreen" && platform != u"minimal";
}

/// Without its database the program can't go on: it says why and stops.
int refuseToStart(const LocalizedError &error)
{
    const QString message = u"Vorn can't open its library.\n\n"_s + error.description()
        + u"\n\nNo document, code or passage in it was changed. The library is the file "_s
        + QDir::toNativeSeparators(AppDatabase::path());
    print(message, stderr);
    if (isWatched())
        QMessageBox::critical(nullptr, u"Vorn"_s, message);
    return EXIT_FAILURE;
}

/// Runs `work` with the library.
template <typename Work>
int onLibrary(const Work &work)
{
    QCoreApplication::setApplicationName(u"Vorn"_s);
    QCoreApplication::setApplicationVersion(version);
    StagingFolder::removeAbandoned(u"vorn-qdpx-"_s); // of programs that were killed
    try {
        return work(*AppDatabase::shared().dbQueue);
    } catch (const LocalizedError &error) {
        return refuseToStart(error);
    }
}

/// For self-tests, which ask the user for nothing.
struct NoDesktop final : FileDialogs, FileViewer {
    QStringList chooseToOpen(const OpenRequest &) override { return {}; }
    std::optional<QString> chooseToSave(const SaveRequest &) override { return {}; }
    void reveal(const QString &) override { }
};

int runSelfTest(DatabaseQueue &queue, const CommandLine &commandLine)
{
    NoDesktop desktop;
    LibraryStore store({.queue = queue, .fileDialogs = desktop, .fileViewer = desktop});
    store.bootstrap();
    if (!store.project().get()) {
        print(store.lastError()->value_or(QString()), stderr);
        return EXIT_FAILURE;
    }
    SelfTests(store, queue, [](const QString &line) { print(line, stdout); }).run(commandLine);
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char **argv)
{
    const CommandLine commandLine(argumentsOf(argc, argv));
    if (const std::optional<QString> answer = answerTo(commandLine))
        return print(*answer, stdout) ? EXIT_SUCCESS : EXIT_FAILURE;
    surviveFileSizeLimit();
    if (commandLine.quits()) { // without a window, so that no display is needed and none is asked for
        const QCoreApplication application(argc, argv);
        return onLibrary([&](DatabaseQueue &queue) { return runSelfTest(queue, commandLine); });
    }
    if (!hasDisplay()) {
        print(u"Vorn needs a display to show its window, and there is none."_s, stderr);
        return EXIT_FAILURE;
    }
    const QApplication application(argc, argv);
    QApplication::setDesktopFileName(u"vorn"_s);
    return onLibrary([&](DatabaseQueue &queue) { return VornApp(queue, commandLine).run(); });
}
