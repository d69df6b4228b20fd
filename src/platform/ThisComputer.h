#pragma once

#include <QString>

/// What users call the machine that they sit at.
[[nodiscard]] inline QString thisComputer()
{
#ifdef Q_OS_MACOS
    return QStringLiteral("this Mac");
#else
    return QStringLiteral("this computer");
#endif
}
