#pragma once

#include "kit/theme/Metrics.h"

#include <QMargins>
#include <QRect>

/// Distances that only the style needs, in logical pixels.
namespace StyleGeometry {

/// A bordered control's shadow lies outside its body, so the widget is this much larger. Layouts don't count it.
inline constexpr QMargins controlShadow{2, 1, 2, 3};

inline constexpr int buttonPadding = 15;
inline constexpr int smallButtonPadding = 11;
inline constexpr int plainButtonPadding = 8;
inline constexpr int iconOnlyPlainSide = 20;
inline constexpr int buttonIcon = 13;
inline constexpr int buttonIconGap = 6;

inline constexpr int editorFrame = 4; // keeps the square viewport out of the round corners
inline constexpr int fieldPadding = 8; // and 2 that QLineEdit adds itself

inline constexpr int searchPadding = 1; // before the magnifying glass, which QLineEdit places itself
inline constexpr int fieldIcon = 12;
inline constexpr int fieldIconMargin = 6;

inline constexpr QSize switchSize{34, 20};
inline constexpr int segmentPadding = 10;

/// The shadow may reach 2 pixels beyond the body; above too, so that the body stays in the middle.
inline constexpr QSize stepperBodySize{52, Metrics::smallControlHeight};
inline constexpr QSize stepperSize{52, Metrics::smallControlHeight + 4};
[[nodiscard]] inline QRect stepperBody(const QRect &rect)
{
    QRect body(QPoint(), stepperBodySize);
    body.moveCenter(rect.center());
    return body;
}

inline constexpr int comboPadding = 11;
inline constexpr int comboArrow = 11;
inline constexpr int comboArrowInset = 9;
inline constexpr int comboArrowRoom = comboArrow + comboArrowInset + 6;
[[nodiscard]] inline QRect comboText(const QRect &body)
{
    return body.adjusted(comboPadding, 0, -comboArrowRoom, 0);
}

inline constexpr int toolTipPadding = 5;

inline constexpr int menuPadding = 5;
inline constexpr int menuItemPadding = 10;
inline constexpr int menuMarkRoom = 18; // of a dot, an icon or a tick before the text
inline constexpr int menuShortcutGap = 32;
inline constexpr int menuLeastWidth = 148;
inline constexpr int menuArrow = 11;
inline constexpr int menuArrowRoom = 24;
inline constexpr int menuSeparatorHeight = 11;
inline constexpr int menuBarInset = 8;
inline constexpr int menuBarPadding = 3;
inline constexpr int menuBarItemPadding = 8;

/// The list of a pop-up button, so that its texts lie over the button's.
[[nodiscard]] inline QRect comboList(const QRect &body)
{
    constexpr int beforeText = 1 + menuPadding + menuItemPadding + menuMarkRoom;
    return body.adjusted(comboPadding - beforeText, 0, menuPadding + 1, 0);
}

inline constexpr int scrollThumb = 6;
inline constexpr int scrollInset = 3;
inline constexpr int scrollBarWidth = scrollThumb + 2 * scrollInset;
inline constexpr int scrollThumbMinimum = 32;

/// A line of one pixel along the middle of the longer axis.
[[nodiscard]] inline QRect middleLine(const QRect &rect)
{
    if (rect.width() < rect.height())
        return {rect.center().x(), rect.top(), 1, rect.height()};
    return {rect.left(), rect.center().y(), rect.width(), 1};
}

} // namespace StyleGeometry
