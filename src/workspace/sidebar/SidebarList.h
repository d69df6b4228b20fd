#pragma once

#include "kit/lists/RowList.h"

#include <QMimeData>
#include <QPointer>

#include <functional>

/// The sidebar's list. Its view sets the selection; clicks and keys only move the current row and act. Rows can be
/// dragged onto each other with the mouse where the model allows it.
class SidebarList final : public RowList {
    Q_OBJECT

public:
    explicit SidebarList(const QString &accessibleName, QWidget *parent = nullptr);

    /// The row that would take what is dragged over the list; invalid for none.
    [[nodiscard]] QModelIndex dropTarget() const { return m_dropTarget; }
    /// Runs `change`, which changes the model, and lays out the rows, without scrolling to the current row.
    void keepScrolled(const std::function<void()> &change);

Q_SIGNALS:
    /// The layout has changed. Not emitted for scrolling, which moves the list's child widgets along.
    void rowsMoved();

protected:
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
        const QModelIndex &index, const QEvent *event) const override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;

    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void drag(const QModelIndex &index);
    /// Outlines the row under the mouse if it takes what is dragged; returns whether it does.
    bool showDropTarget();
    void endDrag();

    QPersistentModelIndex m_pressed;
    QPoint m_pressedAt;
    QPointer<const QMimeData> m_dragged; ///< while something is dragged over the list
    QPoint m_draggedTo;
    QPersistentModelIndex m_dropTarget;
};
