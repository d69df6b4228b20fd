#pragma once

#include "kit/theme/RowPainter.h"
#include "workspace/sidebar/SidebarRow.h"

#include <QFont>
#include <QStyledItemDelegate>

/// Paints the sidebar's lines: heads of sections, the hint, and rows with a mark, a name and a count.
class SidebarDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit SidebarDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// Shows a name that is cut off.
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
        const QModelIndex &index) override;

    /// The line's mark and texts in `rect`, without any ground.
    void paintContent(QPainter &painter, const QRect &rect, const SidebarRow &row, Qt::LayoutDirection direction,
        bool isHighlighted) const;

private:
    void paintGround(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const;
    void paintHead(QPainter &painter, const QRect &rect, const SidebarRow &row, Qt::LayoutDirection direction) const;
    void paintHint(QPainter &painter, const QRect &rect, const SidebarRow &row) const;
    [[nodiscard]] QString countText(const SidebarRow &row) const;
    /// Where the name stands, left of the count; not mirrored.
    [[nodiscard]] QRect nameRect(const QRect &rect, const SidebarRow &row) const;
    [[nodiscard]] const QFont &nameFont(const SidebarRow &row) const;

    QFont m_headFont;
    QFont m_nameFont;
    QFont m_buttonFont;
    QFont m_captionFont;
    RowPainter m_ground;
    int m_rowHeight;
};
