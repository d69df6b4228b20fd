#include "kit/theme/Painting.h"
#include "kit/theme/ScrollActivity.h"
#include "kit/theme/StyleGeometry.h"
#include "kit/theme/Theme.h"
#include "kit/theme/VornStyle.h"

#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace {

struct Thumb {
    int position;
    int length;
};

/// Where the thumb lies in a groove of that length: as long as the visible part is of the whole, but long enough to be
/// taken hold of.
Thumb thumbOf(const QStyleOptionSlider &option, int grooveLength)
{
    const qint64 range = qint64(option.maximum) - option.minimum;
    if (range <= 0)
        return {0, grooveLength};
    const qint64 whole = range + option.pageStep;
    const qint64 proportional = grooveLength * qint64(option.pageStep) / std::max<qint64>(whole, 1);
    const int shortest = std::min(StyleGeometry::scrollThumbMinimum, grooveLength);
    const int length = int(std::clamp<qint64>(proportional, shortest, grooveLength));
    const int position = QStyle::sliderPositionFromValue(
        option.minimum, option.maximum, option.sliderPosition, grooveLength - length, option.upsideDown);
    return {position, length};
}

} // namespace

QRect VornStyle::scrollBarRect(const QStyleOptionSlider &option, SubControl subControl)
{
    const bool isHorizontal = option.orientation == Qt::Horizontal;
    const QRect groove = isHorizontal
        ? option.rect.adjusted(StyleGeometry::scrollInset, 0, -StyleGeometry::scrollInset, 0)
        : option.rect.adjusted(0, StyleGeometry::scrollInset, 0, -StyleGeometry::scrollInset);
    const int grooveLength = std::max(0, isHorizontal ? groove.width() : groove.height());
    const Thumb thumb = thumbOf(option, grooveLength);
    const auto part = [&](int from, int length) {
        const QRect rect = isHorizontal ? QRect(groove.left() + from, groove.top(), length, groove.height())
                                        : QRect(groove.left(), groove.top() + from, groove.width(), length);
        return visualRect(option.direction, option.rect, rect);
    };
    switch (subControl) {
    case SC_ScrollBarSlider:
        return part(thumb.position, thumb.length);
    case SC_ScrollBarSubPage:
        return part(0, thumb.position);
    case SC_ScrollBarAddPage:
        return part(thumb.position + thumb.length, grooveLength - thumb.position - thumb.length);
    case SC_ScrollBarGroove:
        return part(0, grooveLength);
    default: // there are no arrows
        return {};
    }
}

void VornStyle::drawScrollBar(const QStyleOptionSlider &option, QPainter &painter, const QWidget *bar)
{
    const ThemeColors &colors = Theme::colors();
    const bool isTouched = option.state.testFlag(State_MouseOver) || option.activeSubControls == SC_ScrollBarSlider;
    const bool isShown = isTouched || colors.look.hasHighContrast || bar == nullptr || ScrollActivity::isActive(*bar);
    if (option.maximum <= option.minimum || !isShown)
        return;
    const QRect slider = scrollBarRect(option, SC_ScrollBarSlider);
    const QRect thumb = option.orientation == Qt::Horizontal
        ? slider.adjusted(0, StyleGeometry::scrollInset, 0, -StyleGeometry::scrollInset)
        : slider.adjusted(StyleGeometry::scrollInset, 0, -StyleGeometry::scrollInset, 0);
    Painting::fill(painter, thumb, StyleGeometry::scrollThumb, colors.scrollThumb);
}
