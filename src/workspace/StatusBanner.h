#pragma once

#include "kit/controls/Capsule.h"

#include <chrono>
#include <functional>

class ElidedLabel;
class LibraryStore;

/// Shows the store's status message over the bottom of the window for a while.
class StatusBanner final : public Capsule {
    Q_OBJECT

public:
    using RunLater = std::function<void(std::chrono::milliseconds delay, std::function<void()> job)>;

    StatusBanner(LibraryStore &store, QWidget *window);

    /// How the message's time passes; a single-shot timer if none is set.
    void setRunLater(RunLater runLater) { m_runLater = std::move(runLater); }
    /// To be called when the window's size has changed.
    void place();

private:
    void render();

    LibraryStore &m_store;
    RunLater m_runLater;
    ElidedLabel *m_message;
    bool m_isIn = false;
};
