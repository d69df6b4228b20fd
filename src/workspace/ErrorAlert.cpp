#include "workspace/ErrorAlert.h"

#include "kit/controls/Alert.h"
#include "library/LibraryStore.h"

#include <QApplication>
#include <QEvent>
#include <QTextEdit>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto pauseInWriting = 800ms;

} // namespace

ErrorAlert::ErrorAlert(LibraryStore &store, QWidget &window) : QObject(&window), m_store(store), m_window(window)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseInWriting);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        qApp->removeEventFilter(this);
        render();
    });
    connect(&m_store.lastError(), &Notifier::changed, this, &ErrorAlert::noticeError);
    connect(&m_store.isImporting(), &Notifier::changed, this, &ErrorAlert::render);
    render();
}

/// The alert takes the keyboard: what is typed meanwhile would be lost, and the next Space would dismiss it unread.
void ErrorAlert::noticeError()
{
    const auto *editor = qobject_cast<const QTextEdit *>(QApplication::focusWidget());
    if (!m_store.lastError().get() || editor == nullptr || editor->isReadOnly())
        return render();
    qApp->installEventFilter(this);
    m_pause.start();
}

bool ErrorAlert::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::InputMethod)
        m_pause.start();
    return false;
}

void ErrorAlert::render()
{
    const std::optional<QString> error = m_store.lastError().get();
    // The alert would cover the button that stops an import.
    if (!error || m_alert || m_pause.isActive() || m_store.isImporting().get())
        return;
    const auto dismiss = [this, shown = *error] {
        m_alert.clear();
        // Another failure may have come while this one was being read.
        if (m_store.lastError().get() == shown)
            m_store.lastError().set({});
        else
            render();
    };
    // An open sheet stays open below the alert.
    QWidget *modal = QApplication::activeModalWidget();
    m_alert = Alert::show(modal != nullptr ? *modal : m_window,
        {.title = u"Something went wrong"_s,
            .message = *error,
            .action = u"OK"_s,
            .onAction = [dismiss](const QString &) { dismiss(); },
            .onCancel = dismiss});
    // An alert over a sheet is deleted with the sheet, perhaps unread: then it is shown again.
    connect(m_alert, &QObject::destroyed, this, &ErrorAlert::render, Qt::QueuedConnection);
}
