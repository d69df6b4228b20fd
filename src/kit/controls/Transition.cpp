#include "kit/controls/Transition.h"

#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QStyle>
#include <QVariantAnimation>
#include <QWidget>

#include <algorithm>
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

/// A snapshot of a widget, shown while it moves.
class Ghost final : public QWidget {
public:
    explicit Ghost(QWidget &original)
        : QWidget(original.parentWidget()),
          m_picture(original.grab()),
          m_place(original.pos())
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        resize(original.size());
    }

    /// `presence` runs from 0 (away and invisible) to 1; a spring overshoots it a little.
    void setPresence(double presence, QPoint offset)
    {
        m_opacity = std::clamp(presence, 0., 1.);
        move(m_place + offset * (1 - presence));
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setOpacity(m_opacity);
        painter.drawPixmap(0, 0, m_picture);
    }

private:
    QPixmap m_picture;
    QPoint m_place;
    double m_opacity = 0;
};

/// Until the ghost has arrived, the widget shows nothing and takes no clicks.
const QRegion nothing(-1, -1, 1, 1);

void animate(QWidget &widget, const Transition &transition, bool inwards)
{
    auto *ghost = new Ghost(widget);
    ghost->setPresence(inwards ? 0 : 1, transition.offset);
    ghost->stackUnder(&widget);
    ghost->show();
    auto *animation = new QVariantAnimation(ghost);
    animation->setDuration(transition.duration);
    animation->setEasingCurve(transition.curve);
    animation->setStartValue(0.);
    animation->setEndValue(1.);
    QObject::connect(animation, &QVariantAnimation::valueChanged, ghost,
        [ghost, inwards, offset = transition.offset](
            const QVariant &value) { ghost->setPresence(inwards ? value.toDouble() : 1 - value.toDouble(), offset); });
    QObject::connect(animation, &QVariantAnimation::finished, ghost, [ghost] {
        ghost->hide();
        ghost->deleteLater();
    });
    if (inwards) {
        widget.setMask(nothing);
        QObject::connect(ghost, &QObject::destroyed, &widget, [&widget] { widget.clearMask(); });
    }
    animation->start();
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

void Transition::appear(QWidget &widget) const
{
    if (!widget.isHidden())
        return;
    widget.show();
    if (Motion::durationFor(widget, duration) > 0 && widget.isVisible())
        animate(widget, *this, true);
}

void Transition::disappear(QWidget &widget) const
{
    if (widget.isHidden())
        return;
    const bool moves = Motion::durationFor(widget, duration) > 0 && widget.isVisible();
    if (moves)
        animate(widget, *this, false);
    widget.hide();
}

Transition Transition::banner(const QWidget &widget)
{
    const int toBottom = widget.parentWidget() != nullptr ? widget.parentWidget()->height() - widget.y() : 0;
    return {Motion::bannerDuration, Motion::spring(), {0, toBottom}};
}

Transition Transition::selectionBar(const QWidget &widget)
{
    Transition transition = banner(widget);
    transition.duration = Motion::barDuration;
    return transition;
}

Transition Transition::fade()
{
    return {Motion::fadeDuration, QEasingCurve::OutCubic, {}};
}
