#include "kit/controls/Stepper.h"

#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Shadow.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize bodySize{52, Metrics::smallControlHeight};
constexpr int shadowReach = 2; // above too, so that the body stays in the middle
constexpr int cellWidth = 26;
constexpr int symbolSide = 10;
constexpr double symbolStroke = 1.55;
constexpr int firstDelay = 400; // milliseconds
constexpr int nextDelay = 90;

} // namespace

Stepper::Stepper(int minimum, int maximum, QWidget *parent)
    : QWidget(parent),
      m_minimum(minimum),
      m_maximum(maximum),
      m_value(minimum)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setMouseTracking(true);
    connect(&m_repeat, &QTimer::timeout, this, [this] {
        m_repeat.start(nextDelay);
        step();
    });
}

QSize Stepper::sizeHint() const
{
    return {bodySize.width(), bodySize.height() + 2 * shadowReach};
}

QRect Stepper::body() const
{
    QRect body(QPoint(), bodySize);
    body.moveCenter(rect().center());
    return body;
}

FocusOutline Stepper::focusOutline() const
{
    return {body(), Metrics::smallButtonRadius};
}

void Stepper::setValue(int value)
{
    const int next = std::clamp(value, m_minimum, m_maximum);
    if (next == m_value)
        return;
    m_value = next;
    update();
    announceValue(*this, accessibleValue());
    Q_EMIT valueChanged(next);
}

QRect Stepper::rectOf(Cell cell) const
{
    const QRect all = body();
    const QRect first(all.left(), all.top(), cellWidth, all.height());
    const QRect rect = cell == Cell::lower ? first : first.translated(cellWidth, 0);
    return QStyle::visualRect(layoutDirection(), all, rect);
}

Stepper::Cell Stepper::cellAt(const QPoint &position) const
{
    for (const Cell cell : {Cell::lower, Cell::raise}) {
        if (rectOf(cell).contains(position))
            return cell;
    }
    return Cell::none;
}

bool Stepper::canStep(Cell cell) const
{
    switch (cell) {
    case Cell::none:
        return false;
    case Cell::lower:
        return isEnabled() && m_value > m_minimum;
    case Cell::raise:
        return isEnabled() && m_value < m_maximum;
    }
    Q_UNREACHABLE();
}

void Stepper::stepBy(int steps)
{
    setValue(int(std::clamp<qint64>(qint64(m_value) + steps, m_minimum, m_maximum)));
}

void Stepper::step()
{
    if (canStep(m_pressed))
        stepBy(m_pressed == Cell::lower ? -1 : 1);
    else
        m_repeat.stop();
}

void Stepper::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_pressed = cellAt(event->position().toPoint());
    m_repeat.start(firstDelay);
    step();
    update();
}

void Stepper::mouseReleaseEvent(QMouseEvent *)
{
    m_repeat.stop();
    m_pressed = Cell::none;
    update();
}

void Stepper::mouseMoveEvent(QMouseEvent *event)
{
    const Cell hovered = cellAt(event->position().toPoint());
    if (hovered != m_hovered)
        update();
    m_hovered = hovered;
}

void Stepper::leaveEvent(QEvent *)
{
    m_hovered = Cell::none;
    update();
}

void Stepper::keyPressEvent(QKeyEvent *event)
{
    const int forward = isRightToLeft() ? -1 : 1;
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Plus:
        stepBy(1);
        break;
    case Qt::Key_Down:
    case Qt::Key_Minus:
        stepBy(-1);
        break;
    case Qt::Key_Right:
        stepBy(forward);
        break;
    case Qt::Key_Left:
        stepBy(-forward);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void Stepper::paintCell(QPainter &painter, Cell cell, const QString &symbol) const
{
    const ThemeColors &colors = Theme::colors();
    const QRect rect = rectOf(cell);
    if (canStep(cell) && (m_pressed == cell || (m_hovered == cell && m_pressed == Cell::none))) {
        const QColor &tint = m_pressed == cell ? colors.quietSelection : colors.hover;
        Painting::fill(painter, rect.adjusted(1, 1, -1, -1), Metrics::smallButtonRadius - 1, tint);
    }
    QRectF square(0, 0, symbolSide, symbolSide);
    square.moveCenter(QRectF(rect).adjusted(1, 0, 0, 0).center());
    QColor color = colors.secondary;
    if (!canStep(cell))
        color.setAlphaF(.4F);
    Symbols::paint(painter, square, symbol, color, symbolStroke);
}

void Stepper::paintEvent(QPaintEvent *)
{
    const ThemeColors &colors = Theme::colors();
    QPainter painter(this);
    const QRect all = body();
    Shadow::control().paint(painter, all, Metrics::smallButtonRadius);
    Painting::box(painter, all, Metrics::smallButtonRadius, colors.control, colors.controlEdge);
    painter.fillRect(all.center().x() + 1, all.top() + 1, 1, all.height() - 2, colors.hairline);
    paintCell(painter, Cell::lower, u"minus"_s);
    paintCell(painter, Cell::raise, u"plus"_s);
}
