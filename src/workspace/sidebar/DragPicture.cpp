#include "workspace/sidebar/DragPicture.h"

#include "kit/theme/Compositing.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Shadow.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"
#include "workspace/sidebar/SidebarDelegate.h"
#include "workspace/sidebar/SidebarList.h"
#include "workspace/sidebar/SidebarMetrics.h"
#include "workspace/sidebar/SidebarModel.h"

#include <QPainter>

namespace {

constexpr double opacity = .93; // lets the row below be guessed

void paintCard(QPainter &painter, const QRect &card)
{
    const ThemeColors &colors = Theme::colors();
    if (!windowsCanBeTranslucent()) { // nor can what hangs at the mouse
        Painting::box(painter, card, 0, colors.raised, colors.raisedEdge);
        return;
    }
    Shadow::hint().paint(painter, card, Metrics::rowRadius);
    painter.setOpacity(opacity);
    Painting::box(painter, card, Metrics::rowRadius, colors.raised, colors.raisedEdge);
    painter.setOpacity(1);
}

/// The row from a little before its mark to a little behind its count.
QRect cardOf(const QRect &row, int depth)
{
    const int before = SidebarMetrics::mark(row, depth, Metrics::dotDiameter).left() - SidebarMetrics::rowInset;
    return row.adjusted(before - row.left(), 0, -SidebarMetrics::rowInset, 0);
}

} // namespace

DragPicture DragPicture::of(const SidebarList &list, const QModelIndex &index)
{
    const SidebarRow &line = SidebarModel::rowAt(index);
    const QRect row(QPoint(), list.visualRect(index).size());
    const QRect card = cardOf(row, line.depth);
    const QRect placedCard = QStyle::visualRect(list.layoutDirection(), row, card);
    const QMargins reach = windowsCanBeTranslucent() ? Shadow::hint().reach() : QMargins();
    const QRect whole = placedCard.marginsAdded(reach);

    DragPicture picture;
    picture.origin = -whole.topLeft();
    const double ratio = list.devicePixelRatioF();
    picture.pixmap = QPixmap(whole.size() * ratio);
    picture.pixmap.setDevicePixelRatio(ratio);
    picture.pixmap.fill(Qt::transparent);
    QPainter painter(&picture.pixmap);
    painter.translate(picture.origin);
    paintCard(painter, placedCard);
    const auto *delegate = qobject_cast<const SidebarDelegate *>(list.itemDelegate());
    if (delegate != nullptr)
        delegate->paintContent(painter, row, line, list.layoutDirection(), false);
    return picture;
}
