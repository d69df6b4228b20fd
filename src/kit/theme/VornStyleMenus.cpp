#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/PopupShape.h"
#include "kit/theme/Roles.h"
#include "kit/theme/StyleGeometry.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "kit/theme/VornStyle.h"

#include <QComboBox>
#include <QMenu>
#include <QPainter>
#include <QStyleOption>

using namespace Qt::StringLiterals;

namespace {

QColor entryColor(const QStyleOptionMenuItem &option, const QWidget *widget)
{
    constexpr double disabledAlpha = .75;
    const ThemeColors &colors = Theme::colors();
    if (!option.state.testFlag(QStyle::State_Enabled)) {
        QColor pale = colors.tertiary;
        pale.setAlphaF(colors.look.hasHighContrast ? 1 : float(disabledAlpha));
        return pale;
    }
    // A menu's option doesn't say which action it is about.
    const auto *menu = qobject_cast<const QMenu *>(widget);
    const QAction *action = menu != nullptr ? menu->actionAt(option.rect.center()) : nullptr;
    return action != nullptr && isDestructive(*action) ? colors.destructiveText : colors.text;
}

bool hasMarks(const QStyleOptionMenuItem &option)
{
    return option.menuHasCheckableItems || option.maxIconWidth > 0;
}

void paintTint(QPainter &painter, const QRectF &rect)
{
    const ThemeColors &colors = Theme::colors();
    Painting::fill(painter, rect, Metrics::menuItemRadius, colors.selection);
    if (colors.look.hasHighContrast)
        Painting::edge(painter, rect, Metrics::menuItemRadius, colors.accentForeground);
}

/// The square of an icon or tick; a dot in its middle starts where the texts of other menus do.
QRect markRect(const QRect &item)
{
    constexpr int side = 16;
    constexpr int dotMiddle = StyleGeometry::menuItemPadding + Metrics::dotDiameter / 2;
    return {item.left() + dotMiddle - side / 2, item.top() + (item.height() - side) / 2, side, side};
}

bool isCheckable(const QStyleOptionMenuItem &option)
{
    return option.checkType != QStyleOptionMenuItem::NotCheckable;
}

/// The icon and the tick share the place before the text; an entry with both has its tick at its end.
void paintMarks(QPainter &painter, const QStyleOptionMenuItem &option, const QColor &color)
{
    constexpr int tick = 12;
    const QRect &item = option.rect;
    const QRect mark = markRect(item);
    const bool hasIcon = !option.icon.isNull();
    if (hasIcon) {
        const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
        option.icon.paint(&painter, QStyle::visualRect(option.direction, item, mark), Qt::AlignCenter,
            isEnabled ? QIcon::Normal : QIcon::Disabled);
    }
    if (isCheckable(option) && option.checked) {
        QRect square(0, 0, tick, tick);
        square.moveCenter(mark.center());
        if (hasIcon)
            square.moveRight(item.right() - StyleGeometry::menuItemPadding);
        Symbols::paint(painter, QStyle::visualRect(option.direction, item, square), u"checkmark"_s, color,
            Symbols::semiboldStroke);
    }
}

void paintArrow(QPainter &painter, const QRect &item, Qt::LayoutDirection direction)
{
    constexpr int side = StyleGeometry::menuArrow;
    const QRect arrow(item.right() + 1 - StyleGeometry::menuItemPadding - side + 2,
        item.top() + (item.height() - side) / 2, side, side);
    const QString name = direction == Qt::RightToLeft ? u"chevron.left"_s : u"chevron.right"_s;
    Symbols::paint(painter, QStyle::visualRect(direction, item, arrow), name, Theme::colors().tertiary);
}

} // namespace

void VornStyle::drawMenuPanel(const QStyleOption &option, QPainter &painter)
{
    const ThemeColors &colors = Theme::colors();
    Painting::box(painter, option.rect, PopupShape::radius, colors.raised, colors.raisedEdge);
}

void VornStyle::drawMenuItem(const QStyleOptionMenuItem &option, QPainter &painter, const QWidget *menu) const
{
    const ThemeColors &colors = Theme::colors();
    const QRect &item = option.rect;
    if (qobject_cast<const QComboBox *>(menu) != nullptr) // its list fills every row with the window's colour
        painter.fillRect(item, colors.raised);
    if (option.menuItemType == QStyleOptionMenuItem::Separator) {
        constexpr int inset = StyleGeometry::menuItemPadding;
        painter.fillRect(item.left() + inset, item.center().y(), item.width() - 2 * inset, 1, colors.raisedHairline);
        return;
    }
    if (option.state.testFlag(State_Selected) && option.state.testFlag(State_Enabled))
        paintTint(painter, item);

    const QColor color = entryColor(option, menu);
    if (hasMarks(option))
        paintMarks(painter, option, color);
    const int start = StyleGeometry::menuItemPadding + (hasMarks(option) ? StyleGeometry::menuMarkRoom : 0);
    const QRect room = visualRect(option.direction, item, item.adjusted(start, 0, -StyleGeometry::menuItemPadding, 0));
    const int flags = Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextHideMnemonic | Qt::TextDontClip;
    const auto side = [&](Qt::Alignment alignment) {
        return int(visualAlignment(option.direction, alignment)) | flags;
    };
    const qsizetype tab = option.text.indexOf(u'\t');
    painter.setFont(option.font);
    painter.setPen(color);
    const QString label = option.text.left(tab < 0 ? option.text.size() : tab);
    const bool fits = QFontMetricsF(option.font).horizontalAdvance(label) < room.width() + 1;
    painter.drawText(
        room, side(Qt::AlignLeft), fits ? label : option.fontMetrics.elidedText(label, Qt::ElideRight, room.width()));
    if (tab >= 0) {
        painter.setFont(PopupShape::shortcutFont());
        painter.setPen(option.state.testFlag(State_Enabled) ? colors.secondary : color);
        painter.drawText(room, side(Qt::AlignRight), option.text.mid(tab + 1));
    }
    if (option.menuItemType == QStyleOptionMenuItem::SubMenu)
        paintArrow(painter, item, option.direction);
}

void VornStyle::drawMenuBarItem(const QStyleOptionMenuItem &option, QPainter &painter) const
{
    const ThemeColors &colors = Theme::colors();
    painter.fillRect(option.rect, colors.window);
    const bool isActive = option.state.testFlag(State_Selected) || option.state.testFlag(State_Sunken);
    if (isActive)
        Painting::fill(painter, option.rect, Metrics::menuItemRadius, colors.quietSelection);
    painter.setPen(option.state.testFlag(State_Enabled) ? colors.text : colors.tertiary);
    painter.drawText(option.rect, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextHideMnemonic, option.text);
}

QSize VornStyle::menuItemSize(const QStyleOptionMenuItem &option, const QSize &contents)
{
    if (option.menuItemType == QStyleOptionMenuItem::Separator)
        return {contents.width(), StyleGeometry::menuSeparatorHeight};
    int width = contents.width() + 2 * StyleGeometry::menuItemPadding;
    if (hasMarks(option))
        width += StyleGeometry::menuMarkRoom;
    const bool hasTickAtEnd = isCheckable(option) && !option.icon.isNull();
    if (option.menuItemType == QStyleOptionMenuItem::SubMenu || hasTickAtEnd)
        width += StyleGeometry::menuArrowRoom;
    else if (option.text.contains(u'\t'))
        width += StyleGeometry::menuShortcutGap;
    return {width, Metrics::rowHeightFor(Metrics::menuItemHeight, option.fontMetrics.height() - 2)};
}
