#include "workspace/sidebar/InlineField.h"

#include "workspace/theme/FocusRing.h"

#include <QKeyEvent>

namespace {

constexpr int innerMargin = 2; // that QLineEdit leaves beside its text

} // namespace

InlineField::InlineField(const QString &placeholder, QWidget &list, QWidget *parent) : QLineEdit(parent), m_list(list)
{
    setFrame(false);
    setPlaceholderText(placeholder);
    setAccessibleName(placeholder);
    hide();
}

void InlineField::open(const QString &draft)
{
    m_isOpen = true;
    m_cameByKeyboard = FocusRing::isDueTo(m_list);
    setText(draft);
    selectAll();
}

void InlineField::close()
{
    m_isOpen = false;
    if (hasFocus())
        m_list.setFocus(m_cameByKeyboard ? Qt::TabFocusReason : Qt::OtherFocusReason);
    hide();
    clear();
}

void InlineField::place(const QRect &name)
{
    setGeometry(name.adjusted(-innerMargin, 0, innerMargin, 0));
    setVisible(m_isOpen && !name.isEmpty());
}

void InlineField::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT committed();
        break;
    case Qt::Key_Escape:
        Q_EMIT cancelled();
        break;
    default:
        QLineEdit::keyPressEvent(event);
    }
    event->accept(); // the list below would take the key, too
}
