#include "kit/controls/ToggleSwitch.h"

#include "kit/theme/Painting.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"

#include <QPainter>

namespace {

constexpr QSize trackSize{34, 20};
constexpr double knob = 14;
constexpr double outlineWidth = 1.2;

/// The square of the knob, which leans to one end of the track.
QRectF knobAt(const QRectF &track, bool atEnd)
{
    const double gap = (track.height() - knob) / 2;
    const double x = atEnd ? track.right() - gap - knob : track.left() + gap;
    return {x, track.top() + gap, knob, knob};
}

} // namespace

ToggleSwitch::ToggleSwitch(QWidget *parent) : QCheckBox(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize ToggleSwitch::sizeHint() const
{
    return trackSize;
}

FocusOutline ToggleSwitch::focusOutline() const
{
    return {QRectF(rect()), trackSize.height() / 2.};
}

void ToggleSwitch::paintEvent(QPaintEvent *)
{
    const ThemeColors &colors = Theme::colors();
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(.5);
    QRectF track{QPointF(), QSizeF(trackSize)};
    track.moveCenter(QRectF(rect()).center());
    const double radius = track.height() / 2;
    const bool leansRight = isChecked() != isRightToLeft();
    if (isChecked()) {
        Painting::fill(painter, track, radius, underMouse() ? colors.accentHover : Theme::accent);
        Painting::fill(painter, knobAt(track, leansRight), radius, colors.onAccent);
    } else {
        Painting::fill(painter, track, radius, colors.track);
        Painting::edge(painter, track, radius, colors.tertiary, outlineWidth);
        Painting::fill(painter, knobAt(track, leansRight), radius, colors.tertiary);
    }
}
