#pragma once

#include <QString>

#include <exception>
#include <functional>

/// Where a long import stands.
struct ImportStep {
    qint64 number = 0; ///< of the next file, from 1
    qint64 count = 0; ///< number of files, as far as known
    QString name;
};

/// Asked before each file, and now and then during long steps; false stops the import.
using MayImport = std::function<bool(const ImportStep &step)>;

/// Thrown by an import that was stopped and has added nothing.
struct ImportStopped : std::exception { };
