#pragma once

#include <QElapsedTimer>
#include <QObject>

#include <memory>

class LibraryStore;
class ProgressCapsule;
struct ImportStep;

/// Shows over the window how far a long batch of imports has come, and lets the user stop it. A short one shows
/// nothing.
class ImportProgress final : public QObject {
    Q_OBJECT

public:
    explicit ImportProgress(QWidget &window);
    ~ImportProgress() override;

    /// The answer to `LibraryServices::mayImport`: repaints the window, and takes no input but for the Stop button.
    [[nodiscard]] bool mayImport(const ImportStep &step);
    /// The batch is over.
    void finish();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget &m_window;
    QElapsedTimer m_time;
    std::unique_ptr<ProgressCapsule> m_capsule;
    bool m_isStopped = false;
};
