#pragma once

#include <QPixmap>
#include <QPoint>

class QModelIndex;
class SidebarList;

/// What hangs at the mouse while a row is dragged: the row on a raised card.
struct DragPicture {
    QPixmap pixmap;
    QPoint origin; ///< where the row's left top corner lies in the pixmap, in logical pixels

    /// The list's delegate must be a `SidebarDelegate`.
    [[nodiscard]] static DragPicture of(const SidebarList &list, const QModelIndex &index);
};
