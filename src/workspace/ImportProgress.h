#pragma once

#include <QElapsedTimer>
#include <QObject>

#include <chrono>
#include <memory>

class LibraryStore;
class ProgressCapsule;
struct ImportStep;

/// Shows over the window how far a long import has come, and lets the user stop it. Shows nothing for a short one.
class ImportProgress final : public QObject {
    Q_OBJECT

public:
    /// An import is long when it has taken `delay`.
    explicit ImportProgress(QWidget &window, std::chrono::milliseconds delay = std::chrono::milliseconds(500));
    ~ImportProgress() override;

    /// The answer to `LibraryServices::mayImport`. Repaints the window, and lets no input through but to the Stop
    /// button.
    [[nodiscard]] bool mayImport(const ImportStep &step);
    void finish();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget &m_window;
    const std::chrono::milliseconds m_delay;
    QElapsedTimer m_time;
    std::unique_ptr<ProgressCapsule> m_capsule;
    bool m_isStopped = false;
};
