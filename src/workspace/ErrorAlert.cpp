#include "workspace/ErrorAlert.h"

#include "library/LibraryStore.h"
#include "workspace/controls/Alert.h"

#include <QApplication>

using namespace Qt::StringLiterals;

ErrorAlert::ErrorAlert(LibraryStore &store, QWidget &window) : QObject(&window), m_store(store), m_window(window)
{
    connect(&m_store.lastError(), &Notifier::changed, this, &ErrorAlert::render);
    connect(&m_store.isImporting(), &Notifier::changed, this, &ErrorAlert::render);
    render();
}

void ErrorAlert::render()
{
    const std::optional<QString> error = m_store.lastError().get();
    if (!error || m_alert || m_store.isImporting().get()) // an alert would cover the button that stops an import
        return;
    const auto dismiss = [this, shown = *error] {
        m_alert.clear();
        // Another failure may have come while this one was being read.
        if (m_store.lastError().get() == shown)
            m_store.lastError().set({});
        else
            render();
    };
    // A sheet that is open stays below the alert.
    QWidget *modal = QApplication::activeModalWidget();
    m_alert = Alert::show(modal != nullptr ? *modal : m_window,
        {.title = u"Something went wrong"_s,
            .message = *error,
            .field = {},
            .action = u"OK"_s,
            .cancel = {},
            .onAction = [dismiss](const QString &) { dismiss(); },
            .onCancel = dismiss});
    // A sheet that closes takes the alert above it along, though nobody has read it.
    connect(m_alert, &QObject::destroyed, this, &ErrorAlert::render, Qt::QueuedConnection);
}
