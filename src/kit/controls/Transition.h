#pragma once

#include <QEasingCurve>
#include <QPoint>

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

/// Brings a child widget in and takes it out, moving and fading. What moves is a picture of the widget, so that its
/// text is never painted through an effect; the widget itself is shown or hidden at once for everybody who asks.
/// Without animations there is only the final state.
struct Transition {
    int duration = 0; ///< milliseconds
    QEasingCurve curve;
    QPoint offset; ///< where the widget comes from and goes to, beside its place

    void appear(QWidget &widget) const;
    void disappear(QWidget &widget) const;

    /// From the bottom edge of its parent, as messages come.
    [[nodiscard]] static Transition banner(const QWidget &widget);
    [[nodiscard]] static Transition selectionBar(const QWidget &widget);
    [[nodiscard]] static Transition fade();
};
