#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

/// Paints what is due.
inline void paint()
{
    QApplication::processEvents();
    QApplication::sendPostedEvents();
}

inline void press(QWidget &widget, Qt::Key key, const QString &text = {}, Qt::KeyboardModifiers modifiers = {})
{
    QKeyEvent down(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&widget, &down);
}
