#pragma once

#include <QObject>
#include <QPointer>

class Alert;
class LibraryStore;
class QWidget;

/// Shows the store's last error over the window until it is dismissed.
class ErrorAlert final : public QObject {
    Q_OBJECT

public:
    /// `window` owns this.
    ErrorAlert(LibraryStore &store, QWidget &window);

private:
    void render();

    LibraryStore &m_store;
    QWidget &m_window;
    QPointer<Alert> m_alert;
};
