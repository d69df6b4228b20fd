#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

class Alert;
class LibraryStore;
class QWidget;

/// Shows the store's last error over the window until it is dismissed. Waits for the end of an import and, while the
/// user is writing, for a pause.
class ErrorAlert final : public QObject {
    Q_OBJECT

public:
    /// `window` owns this.
    ErrorAlert(LibraryStore &store, QWidget &window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void noticeError();
    void render();

    LibraryStore &m_store;
    QWidget &m_window;
    QPointer<Alert> m_alert;
    QTimer m_pause; ///< runs while the user is writing
};
