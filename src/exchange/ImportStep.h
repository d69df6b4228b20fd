#pragma once

#include <QString>

#include <exception>
#include <functional>

/// Where a long import stands.
struct ImportStep {
    qint64 number = 0; ///< of the file that comes next, from 1
    qint64 count = 0; ///< files in all, as far as they are known
    QString name;
};

/// Asked before each file and, while nothing else can be done, now and then; an answer of false ends the import.
using MayImport = std::function<bool(const ImportStep &step)>;

/// Thrown by an import that ends so and adds nothing.
struct ImportStopped : std::exception { };
