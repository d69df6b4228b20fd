#include "kit/controls/FocusReturn.h"

#include "kit/theme/FocusRing.h"

#include <QApplication>

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
