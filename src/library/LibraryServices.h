#pragma once

#include <QDateTime>
#include <QStringList>

#include <functional>

class DatabaseQueue;
class FileViewer;
class Panels;
class Terminator;

/// Where a batch of imports stands.
struct ImportStep {
    qint64 number = 0; ///< of the file that comes next, from 1
    qint64 count = 0; ///< files in all
    QString name;
};

/// What the store works with. Everything referred to must outlive it.
struct LibraryServices {
    DatabaseQueue &queue;
    Panels &panels;
    FileViewer &fileViewer;
    Terminator &terminator;
    QStringList arguments; ///< of the command line, without the program's name
    std::function<QDateTime()> now = [] { return QDateTime::currentDateTimeUtc(); };
    std::function<void(const QString &line)> print = [](const QString &) {};
    /// Asked before each file of a batch; an answer of false ends the batch and keeps what was written.
    std::function<bool(const ImportStep &step)> mayImport = [](const ImportStep &) { return true; };
};
