#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Roles.h"
#include "kit/theme/Shadow.h"
#include "kit/theme/StyleGeometry.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "kit/theme/VornStyle.h"

#include <QPainter>
#include <QStyleOption>
#include <QWidget>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

struct Fills {
    QColor rest;
    QColor hover;
    QColor pressed;

    [[nodiscard]] const QColor &in(QStyle::State state) const
    {
        if (state.testFlag(QStyle::State_Sunken))
            return pressed;
        return state.testFlag(QStyle::State_MouseOver) ? hover : rest;
    }
};

Fills fillsOf(ButtonRole role)
{
    const ThemeColors &colors = Theme::colors();
    switch (role) {
    case ButtonRole::prominent:
        return {ThemeColors::accent, colors.accentHover, colors.accentPressed};
    case ButtonRole::destructive:
        return {colors.destructiveFill, colors.destructiveHover, colors.destructivePressed};
    case ButtonRole::bordered:
        return {colors.control, mixed(colors.control, colors.hover), mixed(colors.control, colors.quietSelection)};
    case ButtonRole::plain:
        return {Qt::transparent, colors.hover, colors.quietSelection};
    }
    Q_UNREACHABLE();
}

QColor faded(QColor color, double alpha)
{
    color.setAlphaF(float(alpha));
    return color;
}

bool isHighlighted(QStyle::State state)
{
    return state.testFlag(QStyle::State_MouseOver) || state.testFlag(QStyle::State_Sunken);
}

QColor labelColor(ButtonRole role, QStyle::State state)
{
    constexpr double plainDisabled = .55; // nothing but its text says that it can't be pressed
    const ThemeColors &colors = Theme::colors();
    if (!state.testFlag(QStyle::State_Enabled))
        return role == ButtonRole::plain ? faded(colors.tertiary, plainDisabled) : colors.tertiary;
    switch (role) {
    case ButtonRole::prominent:
    case ButtonRole::destructive:
        return colors.onAccent;
    case ButtonRole::bordered:
        return colors.text;
    case ButtonRole::plain:
        return isHighlighted(state) ? colors.text : colors.secondary;
    }
    Q_UNREACHABLE();
}

int paddingOf(const QWidget &button)
{
    if (roleOf(button) == ButtonRole::plain)
        return StyleGeometry::plainButtonPadding;
    switch (sizeOf(button)) {
    case ButtonSize::regular:
        return StyleGeometry::buttonPadding;
    case ButtonSize::small:
        return StyleGeometry::smallButtonPadding;
    case ButtonSize::capsule:
        return StyleGeometry::smallButtonPadding + 1;
    }
    Q_UNREACHABLE();
}

int statedHeight(const QWidget &button)
{
    if (roleOf(button) == ButtonRole::plain)
        return Metrics::plainButtonHeight;
    const bool isSmall = sizeOf(button) != ButtonSize::regular;
    return isSmall ? Metrics::smallControlHeight : Metrics::controlHeight;
}

/// The label without the marks of its shortcut letter.
QString labelOf(const QString &text)
{
    QString label;
    for (qsizetype index = 0; index < text.size(); ++index) {
        if (text[index] == u'&' && index + 1 < text.size())
            ++index;
        label += text[index];
    }
    return label;
}

int widthOf(const QString &label, const QFont &font)
{
    return int(std::lround(QFontMetricsF(font).horizontalAdvance(label)));
}

int labelGap(const QStyleOptionButton &option)
{
    return option.icon.isNull() || option.text.isEmpty() ? 0 : StyleGeometry::buttonIconGap;
}

int iconWidth(const QStyleOptionButton &option)
{
    return option.icon.isNull() ? 0 : option.iconSize.width();
}

void paintBody(QPainter &painter, const QRectF &body, double radius, ButtonRole role, const QColor &fill)
{
    const ThemeColors &colors = Theme::colors();
    if (role != ButtonRole::plain)
        Shadow::control().paint(painter, body, radius);
    Painting::fill(painter, body, radius, fill);
    if (role == ButtonRole::bordered)
        Painting::edge(painter, body, radius, colors.controlEdge);
    else if (role != ButtonRole::plain && colors.look.hasHighContrast)
        Painting::edge(painter, body, radius, colors.text);
}

} // namespace

void VornStyle::drawButton(const QStyleOptionButton &option, QPainter &painter, const QWidget &button) const
{
    const QRectF body = option.rect.marginsRemoved(StyleGeometry::controlShadow);
    const double radius = cornerRadiusOf(button, body.height());
    const ButtonRole role = roleOf(button);
    const ThemeColors &colors = Theme::colors();
    if (option.state.testFlag(State_Enabled)) {
        paintBody(painter, body, radius, role, fillsOf(role).in(option.state));
    } else if (role != ButtonRole::plain) {
        Painting::fill(painter, body, radius, colors.track);
        if (colors.look.hasHighContrast)
            Painting::edge(painter, body, radius, colors.controlEdge);
    }
}

void VornStyle::drawButtonLabel(const QStyleOptionButton &option, QPainter &painter, const QWidget &button) const
{
    const QRect body = option.rect.marginsRemoved(StyleGeometry::controlShadow);
    const ButtonRole role = roleOf(button);
    constexpr int minPadding = 6;
    const int room = body.width() - 2 * minPadding - iconWidth(option) - labelGap(option);
    QString text = labelOf(option.text);
    if (widthOf(text, button.font()) > room)
        text = option.fontMetrics.elidedText(text, Qt::ElideRight, room);
    const int textWidth = widthOf(text, button.font());
    const int width = iconWidth(option) + labelGap(option) + textWidth;
    const int start = role == ButtonRole::plain && !text.isEmpty() ? body.left() + paddingOf(button)
                                                                   : body.left() + (body.width() - width) / 2;

    if (!option.icon.isNull()) {
        const QRect iconRect(
            QPoint(start, body.top() + (body.height() - option.iconSize.height()) / 2), option.iconSize);
        const bool isEnabled = option.state.testFlag(State_Enabled);
        const QIcon::Mode mode = !isEnabled ? QIcon::Disabled
            : isHighlighted(option.state)   ? QIcon::Active
                                            : QIcon::Normal;
        option.icon.paint(&painter, visualRect(option.direction, option.rect, iconRect), Qt::AlignCenter, mode);
    }
    const QRect textRect(start + width - textWidth, body.top(), textWidth, body.height());
    painter.setPen(labelColor(role, option.state));
    painter.drawText(visualRect(option.direction, option.rect, textRect),
        Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine | Qt::TextDontClip, text);
}

QSize VornStyle::buttonSize(const QStyleOptionButton &option, const QWidget *button) const
{
    if (button != nullptr && option.text.isEmpty() && roleOf(*button) == ButtonRole::plain) {
        constexpr QSize least(StyleGeometry::iconOnlyPlainSide, StyleGeometry::iconOnlyPlainSide);
        return option.iconSize.expandedTo(least).grownBy(StyleGeometry::controlShadow);
    }
    const int padding = button != nullptr ? paddingOf(*button) : StyleGeometry::buttonPadding;
    const int stated = button != nullptr ? statedHeight(*button) : Metrics::controlHeight;
    const int text = widthOf(labelOf(option.text), button != nullptr ? button->font() : Fonts::bodyMedium());
    const int content = iconWidth(option) + labelGap(option) + text;
    const int textAir = stated == Metrics::controlHeight ? 0 : 4; // small buttons are closer around their text
    const int height = Metrics::rowHeightFor(stated, option.fontMetrics.height() - textAir);
    const int width = option.text.isEmpty() ? std::max(height, content) : content + 2 * padding;
    return QSize(width, height).grownBy(StyleGeometry::controlShadow);
}

void VornStyle::drawComboBox(const QStyleOptionComboBox &option, QPainter &painter) const
{
    const ThemeColors &colors = Theme::colors();
    const QRect body = option.rect.marginsRemoved(StyleGeometry::controlShadow);
    const bool isEnabled = option.state.testFlag(State_Enabled);
    if (isEnabled)
        paintBody(painter, body, Metrics::controlRadius, ButtonRole::bordered,
            fillsOf(ButtonRole::bordered).in(option.state));
    else
        Painting::fill(painter, body, Metrics::controlRadius, colors.track);
    constexpr int side = StyleGeometry::comboArrow;
    const QRect arrow(
        body.right() + 1 - StyleGeometry::comboArrowInset - side, body.top() + (body.height() - side) / 2, side, side);
    Symbols::paint(painter, visualRect(option.direction, option.rect, arrow), u"chevron.up.chevron.down"_s,
        isEnabled ? colors.secondary : colors.tertiary, Symbols::semiboldStroke);
}

void VornStyle::drawComboBoxLabel(const QStyleOptionComboBox &option, QPainter &painter) const
{
    const ThemeColors &colors = Theme::colors();
    const QRect room = subControlRect(CC_ComboBox, &option, SC_ComboBoxEditField, nullptr);
    painter.setPen(option.state.testFlag(State_Enabled) ? colors.text : colors.tertiary);
    painter.drawText(room, int(visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter)),
        option.fontMetrics.elidedText(option.currentText, Qt::ElideRight, room.width()));
}
