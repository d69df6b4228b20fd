#pragma once

#include "kit/lists/RowLine.h"
#include "kit/theme/RowPainter.h"

#include <QStyledItemDelegate>

/// Where the grounds of a list's rows lie, in logical pixels.
struct RowShape {
    int height = 0; ///< of the ground
    int inset = 0; ///< of the ground from the list's left and right edges
    double radius = 0;
    int gapAbove = 0;
    int gapBelow = 0;
    int airAbove = 0; ///< besides, above the first row
    int airBelow = 0; ///< besides, below the last row
};

/// Paints the ground of rows that are all alike, and shows a name that had to be cut in a tool tip. What stands on the
/// ground is up to subclasses. The list itself takes clicks and keys.
class RowDelegate : public QStyledItemDelegate {
public:
    RowDelegate(const RowShape &shape, QObject *parent);

    [[nodiscard]] const RowShape &shape() const { return m_shape; }
    /// The row without its ground in `rect`.
    void paintContent(
        QPainter &painter, const QRect &rect, Qt::LayoutDirection direction, const QModelIndex &index) const;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
        const QModelIndex &index) override;
    bool editorEvent(QEvent *, QAbstractItemModel *, const QStyleOptionViewItem &, const QModelIndex &) override
    {
        return false;
    }

protected:
    /// Puts on a line as wide and high as the ground what the row shows. Returns false if its name had to be cut.
    virtual bool fill(RowLine &line, const QModelIndex &index) const = 0;

    [[nodiscard]] virtual RowState stateOf(const QStyleOptionViewItem &option, const QModelIndex &index) const;
    [[nodiscard]] int heightWith(int groundHeight, const QModelIndex &index) const;
    [[nodiscard]] QRect groundIn(const QRect &row, const QModelIndex &index) const;

private:
    [[nodiscard]] int gapAbove(const QModelIndex &index) const;
    [[nodiscard]] int gapBelow(const QModelIndex &index) const;

    RowShape m_shape;
};
