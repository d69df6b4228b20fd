#pragma once

#include "kit/lists/RowDelegate.h"
#include "workspace/sidebar/SidebarModel.h"

/// Paints the sidebar's lines: heads of sections, the hint, and rows with a mark, a name and a count.
class SidebarDelegate final : public RowDelegate {
public:
    explicit SidebarDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    bool fill(RowLine &line, const QModelIndex &index) const override;
    [[nodiscard]] RowState stateOf(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    QFont m_headFont;
    QFont m_nameFont;
    QFont m_buttonFont;
    QFont m_captionFont;
};
