#include "Hand.h"

#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QDragMoveEvent>
#include <QMimeData>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

namespace {

using Window = QPointer<QWindow>;

/// Without a desktop a drag ends as soon as it has begun, but its object lives until the event loop runs again.
const QDrag *currentDrag()
{
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        const QList<QDrag *> drags = window->findChildren<QDrag *>();
        if (!drags.isEmpty())
            return drags.last();
    }
    return nullptr;
}

} // namespace

void Hand::click(const QWidget &widget, const QPoint &place, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    const Window window = widget.windowHandle();
    QTest::mousePress(window, button, modifiers, place);
    if (window != nullptr)
        QTest::mouseRelease(window, button, modifiers, place);
}

void Hand::doubleClick(const QWidget &widget, const QPoint &place)
{
    QTest::mouseDClick(widget.windowHandle(), Qt::LeftButton, {}, place);
}

void Hand::drag(const QWidget &widget, const QPoint &from, const QPoint &to)
{
    const Window window = widget.windowHandle();
    QTest::mousePress(window, Qt::LeftButton, {}, from);
    for (const QPoint &place : {(from + to) / 2, to}) {
        if (window == nullptr)
            return;
        // Not by QTest, which runs the event loop: the drag would be gone.
        QMouseEvent move(QEvent::MouseMove, place, window->mapToGlobal(place), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(window, &move);
        if (const QDrag *dragged = currentDrag())
            drop(widget, to, *dragged->mimeData());
    }
    if (window != nullptr)
        QTest::mouseRelease(window, Qt::LeftButton, {}, to);
}

void Hand::drop(const QWidget &widget, const QPoint &place, const QMimeData &data, bool isDropped)
{
    QWindow *window = widget.windowHandle();
    QDragEnterEvent enter(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(window, &enter);
    QDragMoveEvent move(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(window, &move);
    QDragLeaveEvent leave;
    QDropEvent drop(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(window, isDropped ? static_cast<QEvent *>(&drop) : &leave);
}

void Hand::turnWheel(const QWidget &widget, const QPoint &place, int degrees)
{
    QWindow *window = widget.windowHandle();
    QWheelEvent event(
        place, window->mapToGlobal(place), {}, {0, degrees * 8}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(window, &event);
}

void Hand::press(const QWidget &widget, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    const Window window = widget.windowHandle();
    const char letter = QTest::keyToAscii(key);
    const QString text = letter != 0 ? QString(QLatin1Char(letter)) : QString();
    for (const bool isDown : {true, false}) {
        if (window != nullptr)
            QTest::simulateEvent(window, isDown, key, modifiers, text, false);
    }
}

void Hand::paste(const QWidget &widget, const QString &text)
{
    QApplication::clipboard()->setText(text);
    press(widget, Qt::Key_V, Qt::ControlModifier);
}
