#include "kit/lists/SnippetRowDelegate.h"

#include "kit/lists/ListMetrics.h"
#include "kit/lists/RowList.h"
#include "kit/lists/RowText.h"
#include "kit/lists/SnippetLayout.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int paddingAbove = 8;
constexpr int paddingBelow = 8;
constexpr int sourceGap = 4;
constexpr int sourceHeight = 14;
constexpr int dotSide = 6;
constexpr int dotGap = 5;
constexpr int minTitleWidth = 60; // many dots leave that much room
/// The first row keeps this distance from the line above the list.
constexpr int firstRowGap = 6;

int gapAbove(const QModelIndex &index)
{
    return index.row() == 0 ? firstRowGap : ListMetrics::rowGap;
}

/// Lighter than the lines between surfaces, unless lines have to be strong.
QColor separatorColor()
{
    const ThemeColors &colors = Theme::colors();
    QColor color = colors.hairline;
    if (!colors.look.hasHighContrast)
        color.setAlphaF(.7F);
    return color;
}

} // namespace

SnippetRowDelegate::SnippetRowDelegate(QObject *parent)
    : QStyledItemDelegate(parent),
      m_snippetFont(Fonts::body()),
      m_sourceFont(Fonts::caption()),
      m_ground(ListMetrics::rowInset, Metrics::listRowRadius)
{
}

int SnippetRowDelegate::heightFor(int lineCount) const
{
    const int source = std::max(sourceHeight, QFontMetrics(m_sourceFont).height());
    return paddingAbove + paddingBelow + lineCount * SnippetLayout::lineHeightOf({.font = m_snippetFont}) + sourceGap
        + source + ListMetrics::rowGap;
}

SnippetLayout SnippetRowDelegate::layOut(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const TextRange emphasis{index.data(emphasisStartRole).toLongLong(), index.data(emphasisLengthRole).toLongLong()};
    QTextCharFormat format;
    format.setFontWeight(QFont::DemiBold);
    format.setForeground(Theme::colors().accentText);
    const int width = option.rect.width() - 2 * ListMetrics::contentInset;
    return {index.data().toString(), {.font = m_snippetFont, .width = width, .direction = option.direction}, emphasis,
        format};
}

QSize SnippetRowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const int lineCount = layOut(option, index).lineCount();
    return {option.rect.width(), heightFor(lineCount) + gapAbove(index) - ListMetrics::rowGap};
}

void SnippetRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QRect ground = option.rect.adjusted(0, gapAbove(index), 0, 0);
    m_ground.paint(*painter, ground, RowList::stateOf(option, index));
    paintSeparator(*painter, option, index);

    const QRect content =
        ground.adjusted(ListMetrics::contentInset, paddingAbove, -ListMetrics::contentInset, -paddingBelow);
    const SnippetLayout snippet = layOut(option, index);
    painter->setPen(Theme::colors().text);
    snippet.draw(*painter, content.topLeft());
    paintSource(*painter, content.adjusted(0, snippet.height() + sourceGap, 0, 0), option.direction, index);
}

void SnippetRowDelegate::paintSeparator(
    QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    if (index.row() == 0 || RowList::stateOf(option, index).isHovered
        || RowList::stateOf(option, index.siblingAtRow(index.row() - 1)).isHovered)
        return;
    constexpr int inset = ListMetrics::contentInset;
    const QRect line(option.rect.left() + inset, option.rect.top() + 1, option.rect.width() - 2 * inset, 1);
    painter.fillRect(line, separatorColor());
}

void SnippetRowDelegate::paintSource(
    QPainter &painter, const QRect &line, Qt::LayoutDirection direction, const QModelIndex &index) const
{
    const QRect text = paintDots(painter, line, direction, index.data(dotColorsRole).value<QList<QColor>>());
    painter.setPen(Theme::colors().secondary);
    RowText::paint(painter, QStyle::visualRect(direction, line, text), m_sourceFont,
        index.data(documentTitleRole).toString(), direction);
}

QRect SnippetRowDelegate::paintDots(
    QPainter &painter, const QRect &line, Qt::LayoutDirection direction, const QList<QColor> &colors)
{
    QRect rest = line;
    for (const QColor &color : colors) {
        if (rest.width() < minTitleWidth)
            break;
        const QRect dot(rest.left(), line.top() + (line.height() - dotSide) / 2, dotSide, dotSide);
        Painting::dot(painter, QStyle::visualRect(direction, line, dot), color);
        rest.setLeft(dot.right() + 1 + dotGap);
    }
    return rest;
}
