#pragma once

#include "platform/ChildProcess.h"

/// The unzip program, which has surprises: it takes a name for a pattern when that holds '[', '*' or '?', and it opens
/// "a.zip" when "a" is no archive.
namespace Unzip {

inline constexpr int warned = 1; ///< exit status: everything was unpacked
inline constexpr int notAnArchive = 9; ///< exit status

struct Call {
    QString archive; ///< exactly this file is opened, or none
    QStringList options;
    QStringList rest; ///< the arguments after the archive's name
    qint64 outputLimit = 0; ///< as of a ChildProcess::Command
    std::function<bool()> mayGoOn; ///< as of a ChildProcess::Command
};

/// Blocks until unzip has ended.
[[nodiscard]] ChildProcess::Result run(const Call &call);

} // namespace Unzip
