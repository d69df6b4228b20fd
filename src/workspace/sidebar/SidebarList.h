#pragma once

#include "kit/lists/RowList.h"

#include <functional>

/// The sidebar's list. What it selects is told by others; clicks and keys only move the keyboard's place and act. Rows
/// that the model allows to can be dragged onto each other with the mouse.
class SidebarList final : public RowList {
    Q_OBJECT

public:
    explicit SidebarList(const QString &accessibleName, QWidget *parent = nullptr);

    /// The row that would take what is being dragged over the list.
    [[nodiscard]] QModelIndex dropTarget() const { return m_dropTarget; }
    /// Runs `change`, which changes the model, and lays the rows out, without scrolling to the keyboard's place.
    void keepScrolled(const std::function<void()> &change);

Q_SIGNALS:
    /// Rows may stand elsewhere than before, other than by scrolling, which moves the list's children along.
    void rowsMoved();

protected:
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
        const QModelIndex &index, const QEvent *event) const override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void updateGeometries() override;

    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void drag(const QModelIndex &index);
    void setDropTarget(const QModelIndex &index);

    QPersistentModelIndex m_pressed;
    QPoint m_pressedAt;
    QPersistentModelIndex m_dropTarget;
};
