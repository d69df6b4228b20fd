#include "kit/lists/SnippetRowDelegate.h"

#include "kit/lists/SnippetLayout.h"
#include "kit/lists/SnippetList.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Theme.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int padding = 8; // above and below
constexpr int sourceGap = 4;
constexpr int minSourceHeight = 14;
constexpr int dotSide = 6;
constexpr int dotGap = 5;
constexpr int minTitleWidth = 60; // many dots leave that much room

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
    : RowDelegate({.inset = ListMetrics::rowInset,
                      .radius = Metrics::listRowRadius,
                      .gapAbove = ListMetrics::rowGap,
                      .airAbove = ListMetrics::airAbove - ListMetrics::rowGap},
        parent),
      m_snippetFont(Fonts::body()),
      m_sourceFont(Fonts::caption())
{
}

int SnippetRowDelegate::groundHeight(int lineCount) const
{
    const int source = std::max(minSourceHeight, QFontMetrics(m_sourceFont).height());
    return 2 * padding + lineCount * SnippetLayout::lineHeightOf({.font = m_snippetFont}) + sourceGap + source;
}

SnippetList *SnippetRowDelegate::makeList(
    const QString &accessibleName, const QString &objectName, int lineCount, QAbstractItemModel *model)
{
    auto *delegate = new SnippetRowDelegate;
    auto *list = new SnippetList(accessibleName, delegate->groundHeight(lineCount) + ListMetrics::rowGap);
    delegate->setParent(list);
    list->setObjectName(objectName);
    list->setItemDelegate(delegate);
    list->setModel(model);
    return list;
}

SnippetLayout SnippetRowDelegate::layOut(int width, Qt::LayoutDirection direction, const QModelIndex &index) const
{
    const TextRange emphasis{index.data(emphasisStartRole).toLongLong(), index.data(emphasisLengthRole).toLongLong()};
    QTextCharFormat format;
    format.setFontWeight(QFont::DemiBold);
    format.setForeground(Theme::colors().accentText);
    return {index.data().toString(),
        {.font = m_snippetFont, .width = width - 2 * ListMetrics::contentInset, .direction = direction}, emphasis,
        format};
}

QSize SnippetRowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const int lineCount = layOut(option.rect.width(), option.direction, index).lineCount();
    return {option.rect.width(), heightWith(groundHeight(lineCount), index)};
}

/// A line separates rows from each other, except beside a row that is highlighted.
void SnippetRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    RowDelegate::paint(painter, option, index);
    if (index.row() == 0 || RowList::stateOf(option, index).isHovered
        || RowList::stateOf(option, index.siblingAtRow(index.row() - 1)).isHovered)
        return;
    constexpr int inset = ListMetrics::contentInset;
    const QRect line(option.rect.left() + inset, option.rect.top() + 1, option.rect.width() - 2 * inset, 1);
    painter->fillRect(line, separatorColor());
}

bool SnippetRowDelegate::fill(RowLine &line, const QModelIndex &index) const
{
    if (line.painter() == nullptr) // the reader shows the whole passage
        return true;
    const SnippetLayout snippet = layOut(line.rest().width(), line.direction(), index);
    line.skip(ListMetrics::contentInset);
    line.skipAtEnd(ListMetrics::contentInset);
    line.painter()->setPen(Theme::colors().text);
    snippet.draw(*line.painter(), line.rest().topLeft() + QPoint(0, padding));
    const int top = padding + snippet.height() + sourceGap;
    fillSource(line.line(top, line.rest().height() - top - padding), index);
    return true;
}

void SnippetRowDelegate::fillSource(RowLine line, const QModelIndex &index) const
{
    for (const QColor &color : index.data(dotColorsRole).value<QList<QColor>>()) {
        if (line.rest().width() < minTitleWidth)
            break;
        line.dot(color, dotSide, dotGap);
    }
    line.text(index.data(documentTitleRole).toString(), m_sourceFont, Theme::colors().secondary);
}
