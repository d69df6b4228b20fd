#pragma once

#include "exchange/ImportStep.h"

#include <QDateTime>

#include <functional>

class DatabaseQueue;
class FileViewer;
class FileDialogs;

/// What the store works with. Everything referred to must outlive it.
struct LibraryServices {
    DatabaseQueue &queue;
    FileDialogs &fileDialogs;
    FileViewer &fileViewer;
    std::function<QDateTime()> now = [] { return QDateTime::currentDateTimeUtc(); };
    /// After false, a batch of files keeps what was imported, an archive nothing. Must not call back into the store.
    MayImport mayImport = [](const ImportStep &) { return true; };
    /// Called after the last question of an import, before its result is shown.
    std::function<void()> importIsOver = [] {};
};
