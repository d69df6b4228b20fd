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

inline void press(QWidget &widget, Qt::Key key, const QString &text)
{
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&widget, &down);
}
