#include "workspace/results/TermRowDelegate.h"

#include "kit/controls/TextToolTip.h"
#include "kit/lists/ListMetrics.h"
#include "kit/lists/RowList.h"
#include "kit/lists/RowText.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"
#include "platform/LocaleText.h"

#include <QHelpEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr double maxBar = 90;
constexpr double minBar = 4;
constexpr int barHeight = 6;
constexpr int countWidth = 34; // more for counts that need it, in all rows alike
constexpr int spacing = 8;
/// The first row keeps this distance from the line above the list.
constexpr int firstRowGap = 6;

int gapAbove(const QModelIndex &index)
{
    return index.row() == 0 ? firstRowGap : 0;
}

qint64 topCountOf(const QModelIndex &index)
{
    return index.data(TermRowDelegate::topCountRole).toLongLong();
}

} // namespace

TermRowDelegate::TermRowDelegate(QObject *parent)
    : QStyledItemDelegate(parent),
      m_termFont(Fonts::body()),
      m_countFont(Fonts::caption()),
      m_ground(ListMetrics::rowInset, Metrics::listRowRadius)
{
}

double TermRowDelegate::barWidth(qint64 count, qint64 topCount)
{
    return std::max(double(count) * maxBar / double(std::max<qint64>(topCount, 1)), minBar);
}

QSize TermRowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const int height = Metrics::rowHeightFor(Metrics::rowHeight, QFontMetrics(m_termFont).height());
    return {option.rect.width(), height + gapAbove(index)};
}

TermRowDelegate::Parts TermRowDelegate::partsOf(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    constexpr int inset = ListMetrics::contentInset;
    const QRect content = option.rect.adjusted(inset, gapAbove(index), -inset, 0);
    const int widestCount = QFontMetrics(m_countFont).horizontalAdvance(LocaleText::number(topCountOf(index)));
    QRect count = content;
    count.setLeft(content.right() + 1 - std::max(countWidth, widestCount));
    const double width = barWidth(index.data(countRole).toLongLong(), topCountOf(index));
    const int barTop = content.top() + (content.height() - barHeight) / 2;
    const QRectF bar(count.left() - spacing - width, barTop, width, barHeight);
    QRect term = content;
    term.setRight(int(std::floor(bar.left())) - 2 * spacing - 1);
    if (option.direction == Qt::LeftToRight)
        return {term, bar, count};
    const auto mirrored = [&](const QRect &rect) { return QStyle::visualRect(option.direction, content, rect); };
    const QRectF mirroredBar(content.left() + content.right() + 1 - bar.right(), bar.top(), bar.width(), bar.height());
    return {mirrored(term), mirroredBar, mirrored(count)};
}

void TermRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const ThemeColors &colors = Theme::colors();
    m_ground.paint(*painter, option.rect.adjusted(0, gapAbove(index), 0, 0), RowList::stateOf(option, index));
    const Parts parts = partsOf(option, index);
    painter->setPen(colors.text);
    RowText::paint(*painter, parts.term, m_termFont, index.data().toString(), option.direction);
    Painting::fill(*painter, parts.bar, Metrics::barRadius, colors.wordBar);
    painter->setPen(colors.secondary);
    painter->setFont(m_countFont);
    painter->drawText(parts.count,
        int(QStyle::visualAlignment(option.direction, Qt::AlignRight | Qt::AlignVCenter)) | Qt::TextSingleLine,
        LocaleText::number(index.data(countRole).toLongLong()));
}

bool TermRowDelegate::helpEvent(
    QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const QString term = RowText::oneLine(index.data().toString());
    const bool isWhole = RowText::fitting(term, m_termFont, partsOf(option, index).term.width()) == term;
    if (event->type() != QEvent::ToolTip || isWhole)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    TextToolTip::show(event->globalPos(), term, view);
    return true;
}
