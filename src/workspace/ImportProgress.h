#pragma once

#include <QElapsedTimer>
#include <QObject>

#include <chrono>
#include <memory>

class LibraryStore;
class ProgressCapsule;
struct ImportStep;

/// Shows over the window how far a long import has come, and lets the user stop it. A short one shows
/// nothing.
class ImportProgress final : public QObject {
    Q_OBJECT

public:
    /// Shows nothing before an import has taken that long.
    explicit ImportProgress(QWidget &window, std::chrono::milliseconds patience = std::chrono::milliseconds(500));
    ~ImportProgress() override;

    /// The answer to `LibraryServices::mayImport`: repaints the window, and takes no input but for the Stop button.
    [[nodiscard]] bool mayImport(const ImportStep &step);
    /// The import is over.
    void finish();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget &m_window;
    const std::chrono::milliseconds m_patience;
    QElapsedTimer m_time;
    std::unique_ptr<ProgressCapsule> m_capsule;
    bool m_isStopped = false;
};
