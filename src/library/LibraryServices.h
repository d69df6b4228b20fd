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
    /// Of a batch, false keeps what was written; of an archive, nothing. Must not call back into the store.
    MayImport mayImport = [](const ImportStep &) { return true; };
    /// Called when an import won't ask again, before it shows what it has brought.
    std::function<void()> importIsOver = [] {};
};
