#pragma once

#include <QPoint>
#include <Qt>

class QMimeData;
class QWidget;

/// Mouse, keys and drops as a desktop sends them: to a window, which finds out by itself which widget gets them. Places
/// are in the window's coordinates. A window may go away at each of the events that one call sends.
namespace Hand {

void click(const QWidget &window, const QPoint &place, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = {});
void doubleClick(const QWidget &window, const QPoint &place);
/// With the left button. If the window begins to drag something along, that is dropped at `to`.
void drag(const QWidget &window, const QPoint &from, const QPoint &to);
/// Something from outside comes in, moves over `place`, and is dropped or goes out again.
void drop(const QWidget &window, const QPoint &place, const QMimeData &data, bool isDropped = true);
void turnWheel(const QWidget &window, const QPoint &place, int degrees);
void press(const QWidget &window, Qt::Key key, Qt::KeyboardModifiers modifiers = {});
/// Through the clipboard, so that any text will do.
void paste(const QWidget &window, const QString &text);

} // namespace Hand
