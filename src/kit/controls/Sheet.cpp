#include "kit/controls/Sheet.h"

#include "kit/controls/AccessibleDialogs.h"
#include "kit/controls/Transition.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/PopupShape.h"
#include "kit/theme/Shadow.h"
#include "kit/theme/Theme.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QLayout>
#include <QPainter>
#include <QVariantAnimation>
#include <QWindow>

#include <algorithm>

namespace {

constexpr int windowGap = 20;
constexpr int rise = 8; // how far above its place a sheet comes in
constexpr double stackedStrength = .65; // a second sheet dims the window only a little more

} // namespace

Scrim::Scrim(QWidget &window, double strength) : QWidget(&window), m_strength(strength)
{
    setGeometry(window.rect());
    window.installEventFilter(this);
    raise();
    show();
}

void Scrim::setPresence(double presence)
{
    m_presence = presence;
    update();
}

void Scrim::setCaster(const QRect &globalBody)
{
    m_caster = globalBody;
    update();
}

bool Scrim::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return false;
}

void Scrim::paintEvent(QPaintEvent *)
{
    const ThemeColors &colors = Theme::colors();
    QPainter painter(this);
    QColor shade = colors.scrim;
    shade.setAlphaF(shade.alphaF() * float(m_strength * m_presence));
    // A sheet over a sheet: only the body of the lower one is dimmed, not the margin that holds its shadow.
    const bool isOverSheet = qobject_cast<const QDialog *>(parentWidget()) != nullptr;
    const QRect sheetBody = parentWidget()->contentsRect();
    if (isOverSheet)
        Painting::fill(painter, sheetBody, Metrics::sheetRadius, shade);
    else
        painter.fillRect(rect(), shade);
    if (m_caster.isEmpty())
        return;
    const QRect body(mapFromGlobal(m_caster.topLeft()), m_caster.size());
    painter.setOpacity(m_presence);
    if (isOverSheet)
        painter.setClipRect(sheetBody);
    Shadow::sheet().paint(painter, body, Metrics::sheetRadius);
    painter.setOpacity(1);
    Painting::box(painter, body, Metrics::sheetRadius, colors.sheet, colors.raisedEdge);
}

Sheet::Sheet(QWidget &parent, int bodyWidth)
    : QDialog(parent.window(), Qt::Dialog | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint),
      m_bodyWidth(bodyWidth),
      m_paintsShadow(windowsCanBeTranslucent())
{
    describeDialogsToScreenReaders();
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    if (m_paintsShadow) {
        setAttribute(Qt::WA_TranslucentBackground);
        setContentsMargins(Shadow::sheet().reach());
    }
}

QRect Sheet::bodyRect() const
{
    return m_paintsShadow ? rect().marginsRemoved(Shadow::sheet().reach()) : rect();
}

QWidget &Sheet::rootWindow() const
{
    QWidget *window = parentWidget();
    while (window->parentWidget() != nullptr)
        window = window->parentWidget()->window();
    return *window;
}

void Sheet::setVisible(bool visible)
{
    if (visible == isVisible()) {
        QDialog::setVisible(visible);
        return;
    }
    if (visible)
        takeOver();
    QDialog::setVisible(visible);
    if (visible)
        animateIn();
    else
        giveBack();
}

void Sheet::takeOver()
{
    m_focusReturn.note();
    for (QWidget *window = parentWidget(); window != nullptr;
         window = window->parentWidget() != nullptr ? window->parentWidget()->window() : nullptr) {
        const bool isCovered = !window->findChildren<Scrim *>(QString(), Qt::FindDirectChildrenOnly).isEmpty();
        m_scrims.append(new Scrim(*window, isCovered || window != &rootWindow() ? stackedStrength : 1));
    }
    rootWindow().installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &Sheet::keepKeyboard, Qt::QueuedConnection);
    fit();
    place();
}

/// A click on a window below moves the keyboard focus to it although a modal sheet blocks it; the sheet takes it back.
void Sheet::keepKeyboard()
{
    const QWindow *focused = QGuiApplication::focusWindow();
    if (focused != nullptr && focused != windowHandle() && QApplication::activeModalWidget() == this
        && QApplication::activePopupWidget() == nullptr)
        activateWindow();
}

void Sheet::giveBack()
{
    rootWindow().removeEventFilter(this);
    disconnect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &Sheet::keepKeyboard);
    for (const QPointer<Scrim> &scrim : m_scrims)
        delete scrim;
    m_scrims.clear();
    parentWidget()->activateWindow();
    m_focusReturn.giveBack();
}

void Sheet::fit()
{
    const QMargins margins = contentsMargins();
    const int widest = std::max(0, rootWindow().width() - 2 * windowGap);
    const int width = std::min(m_bodyWidth, widest) + margins.left() + margins.right();
    const bool followsWidth = layout() != nullptr && layout()->hasHeightForWidth();
    setFixedSize(width, followsWidth ? layout()->totalHeightForWidth(width) : sizeHint().height());
    if (!m_paintsShadow)
        setMask(PopupShape::core(size(), Metrics::sheetRadius)); // the rest is painted by the scrim
}

/// In the upper third of its window. On Wayland the desktop decides instead.
void Sheet::place()
{
    const QWidget &window = rootWindow();
    const QRect body = bodyRect();
    const int above = std::max(0, (window.height() - body.height()) / 3);
    const QPoint inWindow((window.width() - body.width()) / 2, above);
    const int lift = int(rise * (1 - m_presence));
    const QPoint target = window.mapToGlobal(inWindow);
    move(target - body.topLeft() - QPoint(0, lift));
    if (m_paintsShadow)
        return;
    for (const QPointer<Scrim> &scrim : m_scrims) {
        if (scrim != nullptr)
            scrim->setCaster(QRect(pos(), size()));
    }
}

void Sheet::animateIn()
{
    const int duration = Motion::durationFor(*this, Motion::sheetDuration);
    if (duration == 0)
        return;
    setPresence(0);
    auto *animation = new QVariantAnimation(this);
    animation->setDuration(duration);
    animation->setEasingCurve(QEasingCurve::OutCubic);
    animation->setStartValue(0.);
    animation->setEndValue(1.);
    connect(animation, &QVariantAnimation::valueChanged, this,
        [this](const QVariant &value) { setPresence(value.toDouble()); });
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

void Sheet::setPresence(double presence)
{
    m_presence = presence;
    if (windowsCanFade())
        setWindowOpacity(presence);
    for (const QPointer<Scrim> &scrim : m_scrims) {
        if (scrim != nullptr)
            scrim->setPresence(presence);
    }
    place();
}

bool Sheet::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == &rootWindow() && (event->type() == QEvent::Move || event->type() == QEvent::Resize)) {
        fit();
        place();
    }
    return QDialog::eventFilter(watched, event);
}

bool Sheet::event(QEvent *event)
{
    const bool result = QDialog::event(event);
    if (event->type() == QEvent::LayoutRequest && isVisible()) {
        fit();
        place();
    }
    return result;
}

void Sheet::paintEvent(QPaintEvent *)
{
    const ThemeColors &colors = Theme::colors();
    QPainter painter(this);
    if (m_paintsShadow)
        Shadow::sheet().paint(painter, bodyRect(), Metrics::sheetRadius);
    else
        painter.fillRect(rect(), colors.sheet);
    Painting::box(painter, bodyRect(), Metrics::sheetRadius, colors.sheet, colors.raisedEdge);
}
