#pragma once

#include "platform/Terminator.h"
#include "workspace/DesktopFileDialogs.h"
#include "workspace/DesktopFileViewer.h"

#include <QStringList>

#include <memory>

class DatabaseQueue;
class Appearance;
class ImportProgress;
class LibraryStore;
class PortalSettings;
class RootView;

/// The program: its one store and its one window.
class VornApp final : private Terminator {
public:
    /// `queue` must outlive this; `arguments` are those of the command line without the program's name.
    VornApp(DatabaseQueue &queue, const QStringList &arguments);
    ~VornApp() override;
    VornApp(const VornApp &) = delete;
    VornApp &operator=(const VornApp &) = delete;

    /// Shows the window, starts the store, and returns when the program ends.
    int run();

private:
    void start();
    void terminate() override;

    const bool m_quits; ///< without waiting for a user
    DesktopFileDialogs m_fileDialogs;
    DesktopFileViewer m_fileViewer;
    std::unique_ptr<PortalSettings> m_settings;
    std::unique_ptr<Appearance> m_appearance;
    std::unique_ptr<LibraryStore> m_store;
    std::unique_ptr<RootView> m_window;
    std::unique_ptr<ImportProgress> m_progress;
};
