#pragma once

#include <QEasingCurve>

class QWidget;

/// How things move. Where the desktop asks for no animation, nothing moves and the final state shows at once.
namespace Motion {

// Milliseconds.
inline constexpr int bannerDuration = 250;
inline constexpr int barDuration = 225;
inline constexpr int fadeDuration = 160;
inline constexpr int sheetDuration = 140;

/// A spring with damping .85, from 0 to 1 over the whole duration, with .6 % of overshoot.
[[nodiscard]] QEasingCurve spring();

/// `duration`, or 0 where the style of `widget` wants no animation.
[[nodiscard]] int durationFor(const QWidget &widget, int duration);

} // namespace Motion
