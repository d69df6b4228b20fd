#include "workspace/lists/DocumentRowDelegate.h"

#include "kit/controls/TextToolTip.h"
#include "kit/lists/ListMetrics.h"
#include "kit/lists/RowList.h"
#include "kit/lists/RowText.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"
#include "workspace/lists/DocumentListModel.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int statedHeight = 49;
constexpr int paddingAbove = 8;
constexpr int paddingBelow = 7;
constexpr int lineGap = 4;
constexpr int iconSide = 11;
constexpr int iconFrame = 15;
constexpr int iconGap = 7;

int heightOf(const QFont &font)
{
    return QFontMetrics(font).height();
}

int heightFor(const QFont &title, const QFont &subtitle)
{
    return paddingAbove + heightOf(title) + lineGap + heightOf(subtitle) + paddingBelow;
}

} // namespace

DocumentRowDelegate::DocumentRowDelegate(QObject *parent)
    : QStyledItemDelegate(parent),
      m_titleFont(Fonts::bodyMedium()),
      m_subtitleFont(Fonts::caption()),
      m_ground(ListMetrics::rowInset, Metrics::listRowRadius)
{
}

QSize DocumentRowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    return {option.rect.width(), std::max(statedHeight, heightFor(m_titleFont, m_subtitleFont)) + ListMetrics::rowGap};
}

DocumentRowDelegate::Lines DocumentRowDelegate::linesIn(const QStyleOptionViewItem &option) const
{
    constexpr int inset = ListMetrics::contentInset;
    constexpr int textInset = iconFrame + iconGap;
    const QRect content = option.rect.adjusted(inset, ListMetrics::rowGap, -inset, 0);
    const int titleHeight = heightOf(m_titleFont);
    const int slack = content.height() - heightFor(m_titleFont, m_subtitleFont);
    const int top = content.top() + paddingAbove + slack / 2;
    const QRect icon(
        content.left() + (iconFrame - iconSide) / 2, top + (titleHeight - iconSide + 1) / 2, iconSide, iconSide);
    const QRect title(content.left() + textInset, top, content.width() - textInset, titleHeight);
    const QRect subtitle(title.left(), title.bottom() + 1 + lineGap, title.width(), heightOf(m_subtitleFont));
    const auto placed = [&](const QRect &rect) { return QStyle::visualRect(option.direction, option.rect, rect); };
    return {placed(icon), placed(title), placed(subtitle)};
}

void DocumentRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const ThemeColors &colors = Theme::colors();
    m_ground.paint(*painter, option.rect.adjusted(0, ListMetrics::rowGap, 0, 0), RowList::stateOf(option, index));
    const Lines lines = linesIn(option);
    Symbols::paint(*painter, lines.icon, index.data(DocumentListModel::symbolRole).toString(), colors.accentForeground,
        Symbols::semiboldStroke);
    painter->setPen(colors.text);
    RowText::paint(*painter, lines.title, m_titleFont, index.data().toString(), option.direction);
    painter->setPen(colors.secondary);
    RowText::paint(*painter, lines.subtitle, m_subtitleFont, index.data(DocumentListModel::subtitleRole).toString(),
        option.direction);
}

bool DocumentRowDelegate::helpEvent(
    QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const QString title = index.data().toString();
    const bool isWhole = RowText::fitting(title, m_titleFont, linesIn(option).title.width()) == title;
    if (event->type() != QEvent::ToolTip || isWhole)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    TextToolTip::show(event->globalPos(), title, view);
    return true;
}
