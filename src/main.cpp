#include "library/CommandLine.h"
#include "platform/LocalizedError.h"
#include "records/AppDatabase.h"
#include "workspace/DisplayChoice.h"
#include "workspace/VornApp.h"

#include <QApplication>
#include <QMessageBox>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

QStringList argumentsOf(int argc, char **argv)
{
    QStringList arguments;
    for (int index = 1; index < argc; ++index)
        arguments.append(QString::fromLocal8Bit(argv[index]));
    return arguments;
}

void printToStandardError(const QString &line)
{
    std::fputs((line + u'\n').toUtf8().constData(), stderr);
}

/// Without its database the program can't go on: it says why and stops.
int refuseToStart(const LocalizedError &error, DisplayChoice display)
{
    const QString message =
        u"Vorn can't open its library.\n\n"_s + error.description() + u"\n\nNothing in the library was changed."_s;
    if (display == DisplayChoice::desktop)
        QMessageBox::critical(nullptr, u"Vorn"_s, message);
    else
        printToStandardError(message);
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char **argv)
{
    const QStringList arguments = argumentsOf(argc, argv);
    const DisplayChoice display = chooseDisplay(CommandLine(arguments));
    if (display == DisplayChoice::impossible) {
        printToStandardError(u"Vorn needs a display to show its window, and there is none."_s);
        return EXIT_FAILURE;
    }
    if (display == DisplayChoice::offscreen)
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Vorn"_s);
    QApplication::setApplicationVersion(u"1.0.0"_s);
    try {
        DatabaseQueue &queue = *AppDatabase::shared().dbQueue;
        return VornApp(queue, arguments).run();
    } catch (const LocalizedError &error) {
        return refuseToStart(error, display);
    }
}
