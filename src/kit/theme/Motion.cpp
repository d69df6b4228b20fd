#include "kit/theme/Motion.h"

#include <QStyle>
#include <QWidget>

#include <cmath>
#include <numbers>

namespace {

double springProgress(double progress)
{
    constexpr double damping = .85;
    constexpr double durationInResponses = 1.25;
    constexpr double frequency = 2 * std::numbers::pi * durationInResponses;
    constexpr double dampedShare = .5268; // sqrt(1 - damping²)
    if (progress >= 1)
        return 1; // the spring is still .1 % away when its time is over
    const double decay = std::exp(-damping * frequency * progress);
    const double angle = dampedShare * frequency * progress;
    return 1 - decay * (std::cos(angle) + damping / dampedShare * std::sin(angle));
}

} // namespace

QEasingCurve Motion::spring()
{
    QEasingCurve curve;
    curve.setCustomType(springProgress);
    return curve;
}

int Motion::durationFor(const QWidget &widget, int duration)
{
    return widget.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &widget) > 0 ? duration : 0;
}
