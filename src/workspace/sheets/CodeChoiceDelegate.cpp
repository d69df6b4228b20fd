#include "workspace/sheets/CodeChoiceDelegate.h"

#include "kit/lists/RowList.h"
#include "kit/lists/RowText.h"
#include "kit/theme/CodeColor.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"
#include "platform/LocaleText.h"
#include "workspace/sheets/CodeChoiceModel.h"

#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int statedHeight = 26;
constexpr int textPadding = 5;
constexpr int halfGap = 1; // above and below each row
constexpr int airAtEnds = 5; // besides, above the first row and below the last one
constexpr int fillInset = 8;
constexpr int sidePadding = 16;
constexpr int spacing = 8;
constexpr int levelIndent = 14;
constexpr int markSide = 13;
constexpr int dotSide = 8;

/// However deep in the tree a code is, half of its row is left for it.
int indentOf(const QModelIndex &index, int width)
{
    const qint64 depth = index.data(CodeChoiceModel::depthRole).toLongLong();
    return int(std::min<qint64>(depth, width / 2 / levelIndent)) * levelIndent;
}

/// A square of that side at the left of `content`, in the middle of its height; takes it and a gap away from there.
QRect takeSquare(QRect &content, int side)
{
    const QRect square(content.left(), content.top() + (content.height() - side + 1) / 2, side, side);
    content.setLeft(square.right() + 1 + spacing);
    return square;
}

} // namespace

CodeChoiceDelegate::CodeChoiceDelegate(QObject *parent)
    : QStyledItemDelegate(parent),
      m_nameFont(Fonts::body()),
      m_countFont(Fonts::caption()),
      m_rowHeight(std::max(statedHeight, QFontMetrics(m_nameFont).height() + 2 * textPadding)),
      m_ground(fillInset, Metrics::rowRadius)
{
}

qint64 CodeChoiceDelegate::heightOf(qint64 rowCount) const
{
    return rowCount * (m_rowHeight + 2 * halfGap) + 2 * qint64(airAtEnds);
}

QSize CodeChoiceDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &index) const
{
    const bool isFirst = index.row() == 0;
    const bool isLast = index.row() == index.model()->rowCount() - 1;
    return {0, m_rowHeight + 2 * halfGap + (isFirst ? airAtEnds : 0) + (isLast ? airAtEnds : 0)};
}

void CodeChoiceDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const int above = halfGap + (index.row() == 0 ? airAtEnds : 0);
    const QRect ground(option.rect.left(), option.rect.top() + above, option.rect.width(), m_rowHeight);
    m_ground.paint(*painter, ground, RowList::stateOf(option, index));
    paintContent(*painter, ground, option.direction, index);
}

void CodeChoiceDelegate::paintContent(
    QPainter &painter, const QRect &ground, Qt::LayoutDirection direction, const QModelIndex &index) const
{
    const ThemeColors &colors = Theme::colors();
    const auto placed = [&](const QRect &part) { return QStyle::visualRect(direction, ground, part); };
    QRect rest = ground.adjusted(sidePadding + indentOf(index, ground.width()), 0, -sidePadding, 0);
    const bool isChosen = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    Symbols::paint(painter, placed(takeSquare(rest, markSide)), isChosen ? u"checkmark.circle.fill"_s : u"circle"_s,
        isChosen ? colors.accentForeground : colors.secondary);
    Painting::dot(painter, placed(takeSquare(rest, dotSide)),
        CodeColor::orAccent(index.data(CodeChoiceModel::colorHexRole).toString()));

    const QString count = LocaleText::number(index.data(CodeChoiceModel::countRole).toLongLong());
    const int countWidth = QFontMetrics(m_countFont).horizontalAdvance(count);
    painter.setPen(colors.text);
    RowText::paint(
        painter, placed(rest.adjusted(0, 0, -countWidth - spacing, 0)), m_nameFont, index.data().toString(), direction);
    painter.setPen(colors.secondary);
    rest.setLeft(rest.right() + 1 - countWidth);
    RowText::paint(painter, placed(rest), m_countFont, count, direction);
}

bool CodeChoiceDelegate::editorEvent(QEvent *, QAbstractItemModel *, const QStyleOptionViewItem &, const QModelIndex &)
{
    return false;
}
