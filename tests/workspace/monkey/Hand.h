#pragma once

#include <QTest>

class QMimeData;
class QWidget;

/// Mouse, keys and drops as a desktop sends them: to a window, which finds out by itself who gets them. Places are in
/// the coordinates of the widget that they are given with.
namespace Hand {

void click(const QWidget &widget, const QPoint &place, Qt::MouseButton button = Qt::LeftButton,
    Qt::KeyboardModifiers modifiers = {});
void doubleClick(const QWidget &widget, const QPoint &place);
/// With the left button. What is dragged along, if anything, is let fall at `drop` of the window `over`; tells whether
/// it was taken there.
bool drag(const QWidget &widget, const QPoint &from, const QPoint &to, const QWidget &over, const QPoint &drop);
bool drag(const QWidget &widget, const QPoint &from, const QPoint &to);
void turnWheel(const QWidget &widget, const QPoint &place, int degrees);
void press(const QWidget &widget, Qt::Key key, Qt::KeyboardModifiers modifiers = {});
/// Through the clipboard, so that any text will do.
void paste(const QWidget &widget, const QString &text);
/// Something from outside, which comes in, moves over `place` and is let fall, or goes out again. Tells
/// whether it was taken.
bool dropFromOutside(const QWidget &widget, const QPoint &place, const QMimeData &data, bool letsFall = true);

} // namespace Hand
