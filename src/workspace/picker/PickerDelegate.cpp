#include "workspace/picker/PickerDelegate.h"

#include "kit/lists/RowText.h"
#include "kit/theme/CodeColor.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/RowPainter.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"
#include "platform/LocaleText.h"
#include "workspace/picker/PickerModel.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int padding = 8;
constexpr int spacing = 8;
constexpr double plusSize = 11;

void paintMark(QPainter &painter, const QRect &row, const QModelIndex &index)
{
    const double middle = row.center().y() + 0.5;
    const double left = row.left() + padding;
    if (index.data(PickerModel::createsRole).toBool()) {
        const QRectF box(left - 1, middle - plusSize / 2, plusSize, plusSize);
        Symbols::paint(painter, box, u"plus"_s, Theme::colors().text, Symbols::semiboldStroke);
        return;
    }
    const double diameter = Metrics::dotDiameter;
    Painting::dot(painter, {left, middle - diameter / 2, diameter, diameter},
        CodeColor::orAccent(index.data(PickerModel::colorRole).toString()));
}

} // namespace

void PickerDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    RowState state = RowState::of(option);
    state.isSelected = false;
    state.isHovered = state.isHovered || index.data(PickerModel::returnRole).toBool();
    RowPainter(0, Metrics::rowRadius).paint(*painter, option.rect, state);
    paintMark(*painter, option.rect, index);

    const QRect inner = option.rect.adjusted(padding, 0, -padding, 0);
    int textEnd = inner.right();
    const QVariant count = index.data(PickerModel::countRole);
    if (count.isValid()) {
        const QString text = LocaleText::number(count.toLongLong());
        painter->setFont(Fonts::caption());
        painter->setPen(Theme::colors().secondary);
        painter->drawText(inner, Qt::AlignRight | Qt::AlignVCenter, text);
        textEnd -= QFontMetrics(Fonts::caption()).horizontalAdvance(text) + spacing;
    }
    const QRect nameRect(inner.left() + Metrics::dotDiameter + spacing, inner.top(),
        textEnd - inner.left() - Metrics::dotDiameter - spacing, inner.height());
    painter->setFont(Fonts::body());
    painter->setPen(Theme::colors().text);
    const QString name = RowText::oneLine(index.data(Qt::DisplayRole).toString()).simplified();
    painter->drawText(
        nameRect, Qt::AlignLeft | Qt::AlignVCenter, RowText::fitting(name, Fonts::body(), nameRect.width()));
}

QSize PickerDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    return {0, Metrics::rowHeightFor(Metrics::pickerRowHeight, QFontMetrics(Fonts::body()).height())};
}
