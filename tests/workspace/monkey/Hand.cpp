#include "Hand.h"

#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QDragMoveEvent>
#include <QMimeData>
#include <QPointer>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

namespace {

struct Spot {
    QPointer<QWindow> window;
    QPoint place;
};

Spot spotOf(const QWidget &widget, const QPoint &place)
{
    return {widget.window()->windowHandle(), widget.mapTo(widget.window(), place)};
}

/// Without a desktop a drag ends as soon as it has begun, but its object lives until the next round of the events.
const QDrag *beingDragged()
{
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        const QList<QDrag *> drags = window->findChildren<QDrag *>();
        if (!drags.isEmpty())
            return drags.last();
    }
    return nullptr;
}

bool send(const Spot &spot, const QMimeData &data, bool letsFall)
{
    if (spot.window == nullptr)
        return false;
    QDragEnterEvent enter(spot.place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(spot.window, &enter);
    QDragMoveEvent move(spot.place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(spot.window, &move);
    if (!letsFall) {
        QDragLeaveEvent leave;
        QApplication::sendEvent(spot.window, &leave);
        return false;
    }
    QDropEvent drop(spot.place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    drop.ignore();
    QApplication::sendEvent(spot.window, &drop);
    return drop.isAccepted();
}

} // namespace

void Hand::click(const QWidget &widget, const QPoint &place, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    const Spot spot = spotOf(widget, place);
    if (spot.window != nullptr)
        QTest::mousePress(spot.window, button, modifiers, spot.place);
    if (spot.window != nullptr)
        QTest::mouseRelease(spot.window, button, modifiers, spot.place);
}

void Hand::doubleClick(const QWidget &widget, const QPoint &place)
{
    if (const Spot spot = spotOf(widget, place); spot.window != nullptr)
        QTest::mouseDClick(spot.window, Qt::LeftButton, {}, spot.place);
}

bool Hand::drag(const QWidget &widget, const QPoint &from, const QPoint &to, const QWidget &over, const QPoint &drop)
{
    const Spot start = spotOf(widget, from);
    const Spot end = spotOf(widget, to);
    const Spot aim = spotOf(over, drop);
    if (start.window == nullptr)
        return false;
    bool wasTaken = false;
    QTest::mousePress(start.window, Qt::LeftButton, {}, start.place);
    for (const QPoint &place : {(start.place + end.place) / 2, end.place}) {
        if (start.window == nullptr)
            return wasTaken;
        QMouseEvent move(QEvent::MouseMove, place, start.window->mapToGlobal(place), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(start.window, &move); // at once: a drag is gone after the next round of the events
        if (const QDrag *dragged = beingDragged())
            wasTaken = send(aim, *dragged->mimeData(), true) || wasTaken;
    }
    if (start.window != nullptr)
        QTest::mouseRelease(start.window, Qt::LeftButton, {}, end.place);
    return wasTaken;
}

bool Hand::drag(const QWidget &widget, const QPoint &from, const QPoint &to)
{
    return drag(widget, from, to, widget, to);
}

void Hand::turnWheel(const QWidget &widget, const QPoint &place, int degrees)
{
    const Spot spot = spotOf(widget, place);
    if (spot.window == nullptr)
        return;
    QWheelEvent event(spot.place, spot.window->mapToGlobal(spot.place), {}, {0, degrees * 8}, Qt::NoButton, {},
        Qt::NoScrollPhase, false);
    QApplication::sendEvent(spot.window, &event);
}

void Hand::press(const QWidget &widget, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    // Not as one click: events are dealt with in between, and what has gone by then takes no second one.
    const QPointer<QWindow> window = widget.window()->windowHandle();
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

bool Hand::dropFromOutside(const QWidget &widget, const QPoint &place, const QMimeData &data, bool letsFall)
{
    return send(spotOf(widget, place), data, letsFall);
}
