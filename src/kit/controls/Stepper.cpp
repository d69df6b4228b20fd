#include "kit/controls/Stepper.h"

#include <QKeyEvent>
#include <QWheelEvent>

Stepper::Stepper(int minimum, int maximum, QWidget *parent) : QSpinBox(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setContextMenuPolicy(Qt::NoContextMenu); // the editor's, which nobody sees
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setRange(minimum, maximum);
    setValue(minimum);
}

/// Nothing but steps: what is typed would go to the invisible editor.
void Stepper::keyPressEvent(QKeyEvent *event)
{
    const int forward = isRightToLeft() ? -1 : 1;
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Plus:
        stepUp();
        break;
    case Qt::Key_Down:
    case Qt::Key_Minus:
        stepDown();
        break;
    case Qt::Key_Right:
        stepBy(forward);
        break;
    case Qt::Key_Left:
        stepBy(-forward);
        break;
    default:
        QWidget::keyPressEvent(event); // NOLINT(bugprone-parent-virtual-call)
    }
}

/// Turning the wheel over a sheet must not change what it asks for.
void Stepper::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}
