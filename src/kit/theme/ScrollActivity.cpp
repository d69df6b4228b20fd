#include "kit/theme/ScrollActivity.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QScrollBar>

namespace {

constexpr int lingerTime = 900; // milliseconds

/// The bar lies in a container, and that in the area.
QWidget *areaOf(const QScrollBar &bar)
{
    for (QWidget *widget = bar.parentWidget(); widget != nullptr; widget = widget->parentWidget()) {
        if (qobject_cast<QAbstractScrollArea *>(widget) != nullptr)
            return widget;
    }
    return nullptr;
}

const ScrollActivity *activityOf(const QWidget &bar)
{
    return bar.findChild<ScrollActivity *>(QString(), Qt::FindDirectChildrenOnly);
}

} // namespace

void ScrollActivity::watch(QScrollBar &bar)
{
    if (activityOf(bar) == nullptr)
        new ScrollActivity(bar);
}

bool ScrollActivity::isActive(const QWidget &bar)
{
    const ScrollActivity *activity = activityOf(bar);
    if (activity == nullptr)
        return true;
    return activity->m_lingerTime.isActive() || (activity->m_area != nullptr && activity->m_area->underMouse());
}

ScrollActivity::ScrollActivity(QScrollBar &bar) : QObject(&bar), m_bar(bar), m_area(areaOf(bar))
{
    m_lingerTime.setSingleShot(true);
    m_lingerTime.setInterval(lingerTime);
    const auto repaint = qOverload<>(&QWidget::update);
    connect(&bar, &QScrollBar::valueChanged, this, [this] {
        m_lingerTime.start();
        m_bar.update();
    });
    connect(&m_lingerTime, &QTimer::timeout, &bar, repaint);
    if (m_area != nullptr)
        m_area->installEventFilter(this);
}

bool ScrollActivity::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_area && (event->type() == QEvent::Enter || event->type() == QEvent::Leave))
        m_bar.update();
    return QObject::eventFilter(watched, event);
}
