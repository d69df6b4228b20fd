#pragma once

#include "kit/theme/RowPainter.h"

#include <QListView>

class QMenu;

/// A list whose rows are painted by its delegate. One click on a row acts on it, and so do Return and Space; the right
/// button and the Menu key ask for the row's menu without selecting it. Keeps its place when its model is reset.
class RowList : public QListView {
    Q_OBJECT

public:
    explicit RowList(const QString &accessibleName, QWidget *parent = nullptr);

    /// Whether the row lies under the mouse or its menu is open.
    [[nodiscard]] bool isHighlighted(const QModelIndex &index) const;
    /// How a delegate is to paint the ground of that row.
    [[nodiscard]] static RowState stateOf(const QStyleOptionViewItem &option, const QModelIndex &index);

    /// Opens the menu, which deletes itself afterwards.
    void showMenu(QMenu *menu, const QModelIndex &index, const QPoint &globalPosition);
    /// Moves the keyboard's place, and the selection if there can be one, without scrolling there.
    void setCurrentInPlace(const QModelIndex &index, QItemSelectionModel::SelectionFlags command);

    void reset() override;

Q_SIGNALS:
    void acted(const QModelIndex &index);
    void menuWanted(const QModelIndex &index, const QPoint &globalPosition);

protected:
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
        const QModelIndex &index, const QEvent *event) const override;
    bool viewportEvent(QEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void setHovered(const QModelIndex &index);
    void repaintRow(const QModelIndex &index);

    QPersistentModelIndex m_hovered;
    QPersistentModelIndex m_menuRow;
};
