#include "workspace/sidebar/InlineField.h"

#include "kit/theme/FocusRing.h"
#include "records/TextTrimming.h"

#include <QKeyEvent>
#include <QStyleOptionFrame>

InlineField::InlineField(const QString &placeholder, QWidget &list, QWidget *parent) : QLineEdit(parent), m_list(list)
{
    setFrame(false);
    setMaxLength(maxNameLength); // the default limit cuts what is pasted, silently
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
    const int margin = textMargin();
    setGeometry(name.adjusted(-margin, 0, margin, 0));
    setVisible(m_isOpen && !name.isEmpty());
}

/// Of the text from the sides of the field, as the style and QLineEdit leave it.
int InlineField::textMargin() const
{
    constexpr int ownMargin = 2;
    QStyleOptionFrame option;
    initStyleOption(&option);
    return style()->subElementRect(QStyle::SE_LineEditContents, &option, this).left() + ownMargin;
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
    event->accept(); // or the list below would take the key as well
}
