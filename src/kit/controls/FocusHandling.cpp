#include "kit/controls/FocusHandling.h"

#include "kit/theme/FocusRing.h"

#include <QApplication>
#include <QList>
#include <QWidget>

namespace {

bool takesTab(const QWidget &widget)
{
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isEnabled() && widget.isVisible()
        && widget.focusProxy() == nullptr;
}

/// In the order of the focus chain.
QList<QWidget *> stopsBelow(QWidget &root)
{
    QList<QWidget *> stops;
    for (QWidget *widget = root.nextInFocusChain(); widget != &root; widget = widget->nextInFocusChain()) {
        if (root.isAncestorOf(widget) && takesTab(*widget))
            stops.append(widget);
    }
    return stops;
}

} // namespace

void FocusReturn::note()
{
    m_widget = QApplication::focusWidget();
    m_byKeyboard = m_widget != nullptr && FocusRing::isDueTo(*m_widget);
}

void FocusReturn::giveBack()
{
    if (m_widget != nullptr && m_widget->isVisible())
        m_widget->setFocus(m_byKeyboard ? Qt::TabFocusReason : Qt::OtherFocusReason);
    m_widget = nullptr;
}

bool FocusLoop::advance(QWidget &root, bool forwards)
{
    const QList<QWidget *> stops = stopsBelow(root);
    if (stops.isEmpty())
        return false;
    const qsizetype count = stops.size();
    const qsizetype current = stops.indexOf(root.window()->focusWidget());
    const qsizetype next = forwards ? current + 1 : (current < 0 ? count : current) - 1;
    stops[(next + count) % count]->setFocus(forwards ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}
