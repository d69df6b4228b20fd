#include "workspace/sidebar/SidebarDelegate.h"

#include "kit/theme/Fonts.h"
#include "kit/theme/Theme.h"
#include "workspace/sidebar/SidebarMetrics.h"
#include "workspace/sidebar/SidebarModel.h"

#include <QAbstractScrollArea>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;
using Kind = SidebarRow::Kind;

namespace {

constexpr int headHeight = 24; ///< without the air above
constexpr int airAboveFirstHead = 9;
constexpr int airAboveHead = 13;
constexpr int minHintHeight = 25;
constexpr int textPadding = 5; ///< above and below small texts

bool isButton(const SidebarRow &row)
{
    return row.kind == Kind::newProject || row.kind == Kind::newCode;
}

/// Marks of all sizes are aligned at their right edge, just before the names.
void putMark(RowLine &line, const SidebarRow &row, const QColor &plusColor)
{
    constexpr int bookSide = 13;
    constexpr int plusSide = 11;
    constexpr int plusGap = SidebarMetrics::markGap + 1; // so that the plus is in the middle below the book
    constexpr int gap = SidebarMetrics::markGap;
    constexpr int end = SidebarMetrics::markEnd + gap;
    if (row.kind == Kind::project) {
        line.skip(end - gap - bookSide);
        line.symbol(u"book.closed"_s, Theme::colors().accentForeground, bookSide, gap);
    } else if (isButton(row) && !row.isEdited) {
        line.skip(end - plusGap - plusSide);
        line.symbol(u"plus"_s, plusColor, plusSide, plusGap);
    } else {
        line.skip(end - gap - Metrics::dotDiameter);
        line.dot(
            isButton(row) ? Theme::colors().quaternary : Theme::codeColor(row.colorHex), Metrics::dotDiameter, gap);
    }
}

QRect hintRect(const QRect &row)
{
    return row.adjusted(SidebarMetrics::contentLine, textPadding, -SidebarMetrics::rowInset, 0);
}

} // namespace

SidebarDelegate::SidebarDelegate(QObject *parent)
    : RowDelegate({.height = Metrics::rowHeightFor(Metrics::rowHeight, QFontMetrics(Fonts::body()).height()),
                      .inset = SidebarMetrics::rowInset,
                      .radius = Metrics::rowRadius},
        parent),
      m_headFont(Fonts::sectionHead()),
      m_nameFont(Fonts::body()),
      m_buttonFont(Fonts::callout()),
      m_captionFont(Fonts::caption())
{
}

QSize SidebarDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const SidebarRow &row = SidebarModel::rowAt(index);
    if (row.acts())
        return RowDelegate::sizeHint(option, index);
    if (row.kind == Kind::head) {
        const int air = index.row() == 0 ? airAboveFirstHead : airAboveHead;
        return {0, std::max(headHeight, QFontMetrics(m_headFont).height() + 2 * textPadding) + air};
    }
    const auto *list = qobject_cast<const QAbstractScrollArea *>(option.widget);
    const int width = hintRect(list != nullptr ? list->viewport()->rect() : option.rect).width();
    const QRect lines =
        QFontMetrics(m_captionFont).boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), Qt::TextWordWrap, row.text);
    return {0, std::max(minHintHeight, lines.height() + 2 * textPadding)};
}

void SidebarDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const SidebarRow &row = SidebarModel::rowAt(index);
    if (row.acts())
        return RowDelegate::paint(painter, option, index);
    painter->save();
    if (row.kind == Kind::head) {
        RowLine line(painter, option.rect.adjusted(0, option.rect.height() - headHeight, 0, 0), option.direction);
        line.skip(SidebarMetrics::contentLine);
        line.skipAtEnd(SidebarMetrics::contentLine);
        line.text(row.text, m_headFont, Theme::colors().secondary);
    } else {
        painter->setPen(Theme::colors().tertiary);
        painter->setFont(m_captionFont);
        painter->drawText(hintRect(option.rect), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, row.text);
    }
    painter->restore();
}

/// A field in place of a button has no ground.
RowState SidebarDelegate::stateOf(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const SidebarRow &row = SidebarModel::rowAt(index);
    return isButton(row) && row.isEdited ? RowState() : RowDelegate::stateOf(option, index);
}

bool SidebarDelegate::fill(RowLine &line, const QModelIndex &index) const
{
    const SidebarRow &row = SidebarModel::rowAt(index);
    if (!row.acts())
        return true;
    const ThemeColors &colors = Theme::colors();
    const QColor buttonColor = line.isHighlighted() ? colors.text : colors.secondary;
    line.skip(row.depth * SidebarMetrics::levelIndent);
    line.skipAtEnd(SidebarMetrics::contentLine);
    putMark(line, row, buttonColor);
    if (row.isEdited)
        return true;
    if (isButton(row))
        return line.text(row.text, m_buttonFont, buttonColor);
    line.count(row.count, m_captionFont, SidebarMetrics::markGap);
    return line.text(row.text, m_nameFont, colors.text);
}
