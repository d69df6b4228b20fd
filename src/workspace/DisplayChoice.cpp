#include "workspace/DisplayChoice.h"

#include "library/CommandLine.h"

#include <QtGlobal>

namespace {

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

} // namespace

DisplayChoice chooseDisplay(const CommandLine &commandLine)
{
    if (hasDisplay())
        return DisplayChoice::desktop;
    return commandLine.quits() ? DisplayChoice::offscreen : DisplayChoice::impossible;
}
