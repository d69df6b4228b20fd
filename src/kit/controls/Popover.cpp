#include "kit/controls/Popover.h"

#include "kit/controls/AccessibleDialogs.h"
#include "kit/controls/Capsule.h"
#include "kit/controls/FocusHandling.h"
#include "kit/controls/Transition.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Shadow.h"
#include "kit/theme/Theme.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr int arrowWidth = 14;
constexpr int arrowHeight = 7;
constexpr int distance = 8; // from the bar to the panel
constexpr int windowGap = 8;

QMargins frame()
{
    QMargins margins = Shadow::menu().reach();
    margins.setBottom(std::max(margins.bottom(), arrowHeight));
    return margins;
}

QRect rectInWindow(const QWidget &widget)
{
    const auto *capsule = qobject_cast<const Capsule *>(&widget);
    const QRect body = capsule != nullptr ? capsule->bodyRect() : widget.rect();
    return {widget.mapTo(widget.window(), body.topLeft()), body.size()};
}

Transition fadeIn()
{
    return {Motion::sheetDuration, QEasingCurve::OutCubic, {}};
}

} // namespace

Popover::Popover(QWidget &window) : QWidget(&window)
{
    describeDialogsToScreenReaders();
    setContentsMargins(frame());
    setFocusPolicy(Qt::NoFocus);
    hide();
}

Popover::~Popover()
{
    qApp->removeEventFilter(this);
}

QRect Popover::bodyRect() const
{
    return rect().marginsRemoved(frame());
}

QRect Popover::bodyInWindow() const
{
    return bodyRect().translated(pos());
}

void Popover::openAbove(const QWidget &bar, const QWidget &target, QWidget *firstFocus)
{
    if (!isHidden())
        return;
    m_bar = &bar;
    m_target = &target;
    m_focusReturn.note();
    place();
    raise();
    fadeIn().appear(*this);
    qApp->installEventFilter(this);
    if (firstFocus != nullptr)
        firstFocus->setFocus(Qt::OtherFocusReason);
    else
        FocusLoop::advance(*this, true);
    Q_EMIT opened();
}

void Popover::close()
{
    if (isHidden())
        return;
    qApp->removeEventFilter(this);
    fadeIn().disappear(*this);
    m_focusReturn.giveBack();
    Q_EMIT closed();
}

void Popover::place()
{
    if (m_bar == nullptr || m_target == nullptr)
        return;
    const int width = std::min(Metrics::popoverWidth, parentWidget()->width() - 2 * windowGap);
    const QMargins margins = frame();
    const int fullWidth = width + margins.left() + margins.right();
    const bool followsWidth = layout() != nullptr && layout()->hasHeightForWidth();
    const int fullHeight = followsWidth ? layout()->totalHeightForWidth(fullWidth) : sizeHint().height();
    const int height = fullHeight - margins.top() - margins.bottom();

    const int middle = rectInWindow(*m_target).center().x();
    const int rightmost = std::max(windowGap, parentWidget()->width() - windowGap - width);
    const int left = std::clamp(middle - width / 2, windowGap, rightmost);
    const QRect body(left, rectInWindow(*m_bar).top() - distance - height, width, height);
    setGeometry(body.marginsAdded(margins));
    m_arrowMiddle = middle - x();
    update();
}

bool Popover::closesAt(const QWidget *clicked) const
{
    if (clicked == nullptr || clicked == this || isAncestorOf(clicked))
        return false;
    // Menus that were opened from inside are windows of their own and belong to the popover.
    return clicked->window() == window();
}

bool Popover::eventFilter(QObject *watched, QEvent *event)
{
    const auto *widget = qobject_cast<const QWidget *>(watched);
    if ((event->type() == QEvent::Resize || event->type() == QEvent::Move) && hangsOn(widget))
        place();
    if (event->type() != QEvent::MouseButtonPress)
        return false;
    if (widget == this && !bodyRect().contains(static_cast<QMouseEvent *>(event)->position().toPoint())) {
        close();
        return true;
    }
    if (!closesAt(widget))
        return false;
    close();
    // The press on the target only closes: as a click it would open the popover again.
    return widget == m_target || (m_quiet != nullptr && (widget == m_quiet || m_quiet->isAncestorOf(widget)));
}

bool Popover::hangsOn(const QWidget *widget) const
{
    const auto carries = [widget](const QWidget *place) {
        return place != nullptr && (widget == place || widget->isAncestorOf(place));
    };
    return widget != nullptr && (carries(m_bar) || carries(m_target)); // a target moves within its bar, too
}

void Popover::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

bool Popover::focusNextPrevChild(bool next)
{
    return FocusLoop::advance(*this, next);
}

bool Popover::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest && !isHidden())
        place();
    return QWidget::event(event);
}

QPainterPath Popover::outline() const
{
    const QRectF body = QRectF(bodyRect()).adjusted(.5, .5, -.5, -.5);
    QPainterPath panel;
    panel.addRoundedRect(body, Metrics::popoverRadius, Metrics::popoverRadius);
    constexpr double half = arrowWidth / 2.;
    const double reach = Metrics::popoverRadius + half;
    const double middle = std::clamp(m_arrowMiddle + .5, body.left() + reach, body.right() - reach);
    QPainterPath arrow;
    arrow.moveTo(middle - half, body.bottom() - 1);
    arrow.lineTo(middle - half, body.bottom());
    arrow.lineTo(middle, body.bottom() + arrowHeight);
    arrow.lineTo(middle + half, body.bottom());
    arrow.lineTo(middle + half, body.bottom() - 1);
    arrow.closeSubpath();
    return panel.united(arrow);
}

void Popover::paintEvent(QPaintEvent *)
{
    const ThemeColors &colors = Theme::colors();
    QPainter painter(this);
    Shadow::menu().paint(painter, bodyRect(), Metrics::popoverRadius);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(mixed(colors.raised, colors.raisedEdge), 1));
    painter.setBrush(colors.raised);
    painter.drawPath(outline());
}
