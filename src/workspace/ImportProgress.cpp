#include "workspace/ImportProgress.h"

#include "kit/controls/ProgressCapsule.h"
#include "library/LibraryServices.h"

#include <QApplication>
#include <QEvent>
#include <QEventLoop>

namespace {

bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
    case QEvent::Shortcut:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

} // namespace

ImportProgress::ImportProgress(QWidget &window, std::chrono::milliseconds delay) : m_window(window), m_delay(delay)
{
}

ImportProgress::~ImportProgress() = default;

bool ImportProgress::mayImport(const ImportStep &step)
{
    if (!m_time.isValid())
        m_time.start();
    if (m_time.elapsed() < m_delay.count())
        return true;
    if (!m_capsule) {
        m_capsule = std::make_unique<ProgressCapsule>(m_window);
        connect(m_capsule.get(), &ProgressCapsule::stopped, this, [this] { m_isStopped = true; });
        qApp->installEventFilter(this);
    }
    m_capsule->setProgress(int(step.number), int(step.count), step.name);
    QApplication::processEvents(QEventLoop::AllEvents);
    return !m_isStopped;
}

void ImportProgress::finish()
{
    m_time.invalidate();
    qApp->removeEventFilter(this);
    m_capsule.reset();
    m_isStopped = false;
}

/// The import runs on this thread: input that came through would act on the store in the middle of a batch.
bool ImportProgress::eventFilter(QObject *watched, QEvent *event)
{
    if (!m_capsule || !isInput(event->type()))
        return false;
    if (event->type() == QEvent::Close && watched == &m_window) {
        m_isStopped = true;
        event->ignore();
        return true;
    }
    const bool isShortcut = event->type() == QEvent::Shortcut;
    const auto *widget = qobject_cast<const QWidget *>(watched);
    const bool isForCapsule = widget != nullptr && (widget == m_capsule.get() || m_capsule->isAncestorOf(widget));
    return isShortcut || (widget != nullptr && !isForCapsule);
}
