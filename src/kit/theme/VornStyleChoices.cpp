#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Shadow.h"
#include "kit/theme/StyleGeometry.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "kit/theme/VornStyle.h"

#include <QPainter>
#include <QStyleOption>

using namespace Qt::StringLiterals;

/// On and off differ in shape, not only in colour.
void VornStyle::drawSwitch(const QStyleOption &option, QPainter &painter)
{
    constexpr double knob = 14;
    constexpr double outlineWidth = 1.2;
    const ThemeColors &colors = Theme::colors();
    const Painting::Smooth smooth(painter);
    if (!option.state.testFlag(State_Enabled))
        painter.setOpacity(.5);
    const bool isOn = option.state.testFlag(State_On);
    const QRectF track(option.rect);
    const double radius = track.height() / 2;
    const double gap = (track.height() - knob) / 2;
    const bool leansRight = isOn != (option.direction == Qt::RightToLeft);
    const QRectF place(leansRight ? track.right() - gap - knob : track.left() + gap, track.top() + gap, knob, knob);
    if (isOn) {
        const bool isHovered = option.state.testFlag(State_MouseOver);
        Painting::fill(painter, track, radius, isHovered ? colors.accentHover : ThemeColors::accent);
        Painting::fill(painter, place, radius, colors.onAccent);
    } else {
        Painting::fill(painter, track, radius, colors.track);
        Painting::edge(painter, track, radius, colors.tertiary, outlineWidth);
        Painting::fill(painter, place, radius, colors.tertiary);
    }
}

void VornStyle::drawSegmentTrack(const QRect &track, QPainter &painter)
{
    const ThemeColors &colors = Theme::colors();
    Painting::fill(painter, track, Metrics::controlRadius, colors.track);
    if (colors.look.hasHighContrast)
        Painting::edge(painter, track, Metrics::controlRadius, colors.controlEdge);
}

void VornStyle::drawSegment(const QStyleOptionTab &option, QPainter &painter)
{
    constexpr int inset = 2;
    constexpr double knobRadius = 5.5;
    const ThemeColors &colors = Theme::colors();
    const bool isAlone = option.position == QStyleOptionTab::OnlyOneTab;
    const bool isFirst = isAlone || option.position == QStyleOptionTab::Beginning;
    const bool isLast = isAlone || option.position == QStyleOptionTab::End;
    const bool isChosen = option.state.testFlag(State_Selected);
    const bool isEnabled = option.state.testFlag(State_Enabled);
    const QRect &segment = option.rect;
    const QRect knob = visualRect(
        option.direction, segment, segment.adjusted(isFirst ? inset : 0, inset, isLast ? -inset : 0, -inset));
    if (isChosen && isEnabled) {
        constexpr Shadow shadow{QColor(0, 0, 0, 31), 2, 1};
        shadow.paint(painter, knob, knobRadius);
        Painting::fill(painter, knob, knobRadius, colors.knob);
        if (colors.look.hasHighContrast)
            Painting::edge(painter, knob, knobRadius, colors.text);
    }
    if (!isFirst && !isChosen && option.selectedPosition != QStyleOptionTab::PreviousIsSelected) {
        constexpr int lineInset = 8;
        const QRect line(segment.left(), segment.top() + lineInset, 1, segment.height() - 2 * lineInset);
        painter.fillRect(visualRect(option.direction, segment, line), colors.raisedHairline);
    }
    painter.setFont(isChosen ? Fonts::bodyMedium() : Fonts::body());
    painter.setPen(!isEnabled ? colors.tertiary : isChosen ? colors.text : colors.secondary);
    painter.drawText(knob, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip, option.text);
}

QRect VornStyle::stepperRect(const QStyleOptionComplex &option, SubControl subControl)
{
    const QRect body = StyleGeometry::stepperBody(option.rect);
    const int half = body.width() / 2;
    switch (subControl) {
    case SC_SpinBoxDown:
        return visualRect(option.direction, body, body.adjusted(0, 0, -half, 0));
    case SC_SpinBoxUp:
        return visualRect(option.direction, body, body.adjusted(half, 0, 0, 0));
    case SC_SpinBoxFrame:
        return body;
    default:
        return {}; // no editor: a label beside the control says its value
    }
}

void VornStyle::drawStepper(const QStyleOptionSpinBox &option, QPainter &painter)
{
    constexpr int symbolSide = 10;
    constexpr double symbolStroke = 1.55;
    const ThemeColors &colors = Theme::colors();
    const QRect body = StyleGeometry::stepperBody(option.rect);
    Shadow::control().paint(painter, body, Metrics::smallButtonRadius);
    Painting::box(painter, body, Metrics::smallButtonRadius, colors.control, colors.controlEdge);
    painter.fillRect(body.center().x() + 1, body.top() + 1, 1, body.height() - 2, colors.hairline);
    const auto paintCell = [&](SubControl cell, QAbstractSpinBox::StepEnabledFlag step, const QString &symbol) {
        const QRect rect = stepperRect(option, cell);
        const bool canStep = option.state.testFlag(State_Enabled) && option.stepEnabled.testFlag(step);
        if (canStep && option.activeSubControls.testFlag(cell)) {
            const QColor &tint = option.state.testFlag(State_Sunken) ? colors.quietSelection : colors.hover;
            Painting::fill(painter, rect.adjusted(1, 1, -1, -1), Metrics::smallButtonRadius - 1, tint);
        }
        QRectF square(0, 0, symbolSide, symbolSide);
        square.moveCenter(QRectF(rect).adjusted(1, 0, 0, 0).center());
        QColor color = colors.secondary;
        if (!canStep)
            color.setAlphaF(.4F);
        Symbols::paint(painter, square, symbol, color, symbolStroke);
    };
    paintCell(SC_SpinBoxDown, QAbstractSpinBox::StepDownEnabled, u"minus"_s);
    paintCell(SC_SpinBoxUp, QAbstractSpinBox::StepUpEnabled, u"plus"_s);
}

void VornStyle::drawProgressBar(const QStyleOptionProgressBar &option, QPainter &painter)
{
    const int range = option.maximum - option.minimum;
    QRectF done(option.rect);
    done.setWidth(range > 0 ? done.width() * (option.progress - option.minimum) / range : 0);
    if (option.direction == Qt::RightToLeft)
        done.moveRight(QRectF(option.rect).right());
    Painting::fill(painter, option.rect, Metrics::barRadius, Theme::colors().track);
    Painting::fill(painter, done, Metrics::barRadius, ThemeColors::accent);
}
