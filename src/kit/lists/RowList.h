#pragma once

#include "kit/theme/RowPainter.h"

#include <QListView>

class QMenu;

/// A list whose rows are painted by its delegate. A click on a row acts on it, and so do Return and Space; the right
/// button and the Menu key ask for the row's menu without selecting it. Keys show where the current row is. Keeps its
/// place when its model is reset.
class RowList : public QListView {
    Q_OBJECT

public:
    explicit RowList(const QString &accessibleName, QWidget *parent = nullptr);

    /// Whether the row lies under the mouse or its menu is open.
    [[nodiscard]] bool isHighlighted(const QModelIndex &index) const;
    /// How a delegate must paint the ground of that row.
    [[nodiscard]] static RowState stateOf(const QStyleOptionViewItem &option, const QModelIndex &index);

    /// Opens the menu of that row, which stays highlighted meanwhile. The menu deletes itself.
    void showMenu(QMenu *menu, const QModelIndex &index, const QPoint &globalPosition);
    /// Makes that row the current one, and selects it where `command` says so, without scrolling there.
    void setCurrentInPlace(const QModelIndex &index, QItemSelectionModel::SelectionFlags command);
    /// Begins at the top, without a current row.
    void startAnew();

    void reset() override;

Q_SIGNALS:
    void acted(const QModelIndex &index);
    void menuWanted(const QModelIndex &index, const QPoint &globalPosition);

protected:
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
        const QModelIndex &index, const QEvent *event) const override;
    bool viewportEvent(QEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    [[nodiscard]] QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void setHovered(const QModelIndex &index);
    void hoverAtMouse();
    void repaintRow(const QModelIndex &index);

    QPersistentModelIndex m_hovered;
    QPersistentModelIndex m_menuRow;
};
