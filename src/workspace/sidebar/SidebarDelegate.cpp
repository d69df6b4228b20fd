#include "workspace/sidebar/SidebarDelegate.h"

#include "kit/controls/TextToolTip.h"
#include "kit/lists/RowList.h"
#include "kit/lists/RowText.h"
#include "kit/theme/CodeColor.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"
#include "platform/LocaleText.h"
#include "workspace/sidebar/SidebarList.h"
#include "workspace/sidebar/SidebarMetrics.h"
#include "workspace/sidebar/SidebarModel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

using namespace Qt::StringLiterals;
using Kind = SidebarRow::Kind;

namespace {

constexpr int headHeight = 24; ///< without the air above
constexpr int airAboveFirstHead = 9;
constexpr int airAboveHead = 13;
constexpr int hintHeight = 25;
constexpr int textPadding = 5; ///< above and below small texts
constexpr int bookSide = 13;
constexpr int plusSide = 11;
constexpr int plusEnd = 28; // a pixel before other marks, so that all of them share an axis

void paintMark(
    QPainter &painter, const QRect &rect, const SidebarRow &row, const QColor &plusColor, Qt::LayoutDirection direction)
{
    const auto placed = [&](const QRect &square) { return QStyle::visualRect(direction, rect, square); };
    switch (row.kind) {
    case Kind::project: {
        const QRect square = placed(SidebarMetrics::mark(rect, row.depth, bookSide));
        Symbols::paint(painter, square, u"book.closed"_s, Theme::colors().accentForeground);
        return;
    }
    case Kind::newProject:
    case Kind::newCode:
        if (!row.isEdited) {
            const QRect square = SidebarMetrics::mark(rect, 0, plusSide);
            const QRect moved = placed(square.translated(plusEnd - SidebarMetrics::markEnd, 0));
            Symbols::paint(painter, moved, u"plus"_s, plusColor);
            return;
        }
        Painting::dot(painter, placed(SidebarMetrics::mark(rect, 0, Metrics::dotDiameter)), Theme::colors().quaternary);
        return;
    case Kind::code:
        Painting::dot(painter, placed(SidebarMetrics::mark(rect, row.depth, Metrics::dotDiameter)),
            CodeColor::orAccent(row.colorHex));
        return;
    case Kind::head:
    case Kind::hint:
        return;
    }
}

/// Texts read from right to left stand at the right, whichever way the window reads.
void paintByItsOwnDirection(QPainter &painter, const QRect &rect, const QFont &font, const QString &text)
{
    const Qt::LayoutDirection direction = text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
    painter.setLayoutDirection(direction);
    RowText::paint(painter, rect, font, text, direction);
}

QRect hintRect(const QRect &row)
{
    return row.adjusted(SidebarMetrics::contentLine, textPadding, -SidebarMetrics::rowInset, 0);
}

bool isButton(const SidebarRow &row)
{
    return row.kind == Kind::newProject || row.kind == Kind::newCode;
}

bool hasCount(const SidebarRow &row)
{
    return row.kind == Kind::project || row.kind == Kind::code;
}

} // namespace

SidebarDelegate::SidebarDelegate(QObject *parent)
    : QStyledItemDelegate(parent),
      m_headFont(Fonts::sectionHead()),
      m_nameFont(Fonts::body()),
      m_buttonFont(Fonts::callout()),
      m_captionFont(Fonts::caption()),
      m_ground(SidebarMetrics::rowInset, Metrics::rowRadius),
      m_rowHeight(Metrics::rowHeightFor(Metrics::rowHeight, QFontMetrics(m_nameFont).height()))
{
}

QSize SidebarDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const SidebarRow &row = SidebarModel::rowAt(index);
    if (row.acts())
        return {0, m_rowHeight};
    if (row.kind == Kind::head) {
        const int air = index.row() == 0 ? airAboveFirstHead : airAboveHead;
        return {0, std::max(headHeight, QFontMetrics(m_headFont).height() + 2 * textPadding) + air};
    }
    const auto *list = qobject_cast<const QAbstractScrollArea *>(option.widget);
    const int width = hintRect(list != nullptr ? list->viewport()->rect() : option.rect).width();
    const QRect lines =
        QFontMetrics(m_captionFont).boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), Qt::TextWordWrap, row.text);
    return {0, std::max(hintHeight, lines.height() + 2 * textPadding)};
}

void SidebarDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const SidebarRow &row = SidebarModel::rowAt(index);
    painter->save();
    switch (row.kind) {
    case Kind::head:
        paintHead(*painter, option.rect, row, option.direction);
        break;
    case Kind::hint:
        paintHint(*painter, option.rect, row);
        break;
    case Kind::project:
    case Kind::newProject:
    case Kind::code:
    case Kind::newCode:
        paintGround(*painter, option, index);
        paintContent(*painter, option.rect, row, option.direction, RowList::stateOf(option, index).isHovered);
        break;
    }
    painter->restore();
}

void SidebarDelegate::paintGround(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const bool isField = isButton(SidebarModel::rowAt(index)) && SidebarModel::rowAt(index).isEdited;
    if (!isField)
        m_ground.paint(painter, option.rect, RowList::stateOf(option, index));
    const auto *list = qobject_cast<const SidebarList *>(option.widget);
    if (list != nullptr && list->dropTarget() == index) {
        Painting::edge(painter, m_ground.fillRect(option.rect), Metrics::rowRadius, Theme::colors().accentForeground,
            Metrics::ringWidth);
    }
}

void SidebarDelegate::paintHead(
    QPainter &painter, const QRect &rect, const SidebarRow &row, Qt::LayoutDirection direction) const
{
    const QRect line = SidebarMetrics::content(rect, 0);
    painter.setPen(Theme::colors().secondary);
    RowText::paint(painter, line.adjusted(0, line.height() - headHeight, 0, 0), m_headFont, row.text, direction);
}

void SidebarDelegate::paintHint(QPainter &painter, const QRect &rect, const SidebarRow &row) const
{
    painter.setPen(Theme::colors().tertiary);
    painter.setFont(m_captionFont);
    painter.drawText(hintRect(rect), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, row.text);
}

void SidebarDelegate::paintContent(QPainter &painter, const QRect &rect, const SidebarRow &row,
    Qt::LayoutDirection direction, bool isHighlighted) const
{
    const ThemeColors &colors = Theme::colors();
    const QColor buttonColor = isHighlighted ? colors.text : colors.secondary;
    paintMark(painter, rect, row, buttonColor, direction);
    if (row.isEdited)
        return;
    const auto placed = [&](const QRect &part) { return QStyle::visualRect(direction, rect, part); };
    painter.setPen(isButton(row) ? buttonColor : colors.text);
    paintByItsOwnDirection(painter, placed(nameRect(rect, row)), nameFont(row), row.text);
    if (!hasCount(row))
        return;
    painter.setPen(colors.secondary);
    const Qt::LayoutDirection opposite = direction == Qt::LeftToRight ? Qt::RightToLeft : Qt::LeftToRight;
    RowText::paint(painter, placed(SidebarMetrics::content(rect, row.depth)), m_captionFont, countText(row), opposite);
}

bool SidebarDelegate::helpEvent(
    QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid() || !SidebarModel::rowAt(index).acts())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const SidebarRow &row = SidebarModel::rowAt(index);
    const bool isWhole =
        row.isEdited || RowText::fitting(row.text, nameFont(row), nameRect(option.rect, row).width()) == row.text;
    if (isWhole)
        QToolTip::hideText();
    else
        TextToolTip::show(event->globalPos(), row.text, view);
    return true;
}

QString SidebarDelegate::countText(const SidebarRow &row) const
{
    return LocaleText::number(row.count);
}

QRect SidebarDelegate::nameRect(const QRect &rect, const SidebarRow &row) const
{
    const QRect whole = SidebarMetrics::name(rect, row.depth);
    if (!hasCount(row))
        return whole;
    const int countWidth = QFontMetrics(m_captionFont).horizontalAdvance(countText(row));
    return whole.adjusted(0, 0, -countWidth - SidebarMetrics::markGap, 0);
}

const QFont &SidebarDelegate::nameFont(const SidebarRow &row) const
{
    return isButton(row) ? m_buttonFont : m_nameFont;
}
