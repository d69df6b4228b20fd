#pragma once

#include "library/CommandLine.h"

#include <memory>

class DatabaseQueue;
class Appearance;
class FileDialogs;
class FileViewer;
class ImportProgress;
class LibraryStore;
class PortalSettings;
class RootView;

/// The program with its one store and its one window.
class VornApp {
public:
    /// `queue` must outlive this.
    VornApp(DatabaseQueue &queue, CommandLine commandLine);
    ~VornApp();
    VornApp(const VornApp &) = delete;
    VornApp &operator=(const VornApp &) = delete;

    /// Shows the window, starts the store, and returns when the program ends.
    int run();

private:
    void start();

    CommandLine m_commandLine;
    std::unique_ptr<FileDialogs> m_fileDialogs;
    std::unique_ptr<FileViewer> m_fileViewer;
    std::unique_ptr<PortalSettings> m_settings;
    std::unique_ptr<Appearance> m_appearance;
    std::unique_ptr<LibraryStore> m_store;
    std::unique_ptr<RootView> m_window;
    std::unique_ptr<ImportProgress> m_progress;
};
