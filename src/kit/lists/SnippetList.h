#pragma once

#include "kit/lists/BlockHeights.h"
#include "kit/lists/RowList.h"

#include <vector>

/// A list whose rows are as high as their text. Asks its delegate only for the heights of rows in view, and estimates
/// the others, so that a hundred thousand rows open as quickly as ten. What is in view stays in place when an estimate
/// was wrong, the width changes, or the model is reset.
class SnippetList final : public RowList {
    Q_OBJECT

public:
    /// `estimatedHeight` of a row in logical pixels, above 0.
    SnippetList(const QString &accessibleName, int estimatedHeight, QWidget *parent = nullptr);

    [[nodiscard]] QRect visualRect(const QModelIndex &index) const override;
    [[nodiscard]] QModelIndex indexAt(const QPoint &point) const override;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    void reset() override;
    void doItemsLayout() override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command) override;
    [[nodiscard]] QRegion visualRegionForSelection(const QItemSelection &selection) const override;

private:
    [[nodiscard]] QModelIndex indexOf(int row) const;
    [[nodiscard]] QStyleOptionViewItem optionFor(const QModelIndex &index) const;
    [[nodiscard]] int rowAfter(CursorAction action) const;

    void forgetHeights();
    /// Replaces an estimate; returns by how much the row has grown.
    int measure(int row);
    void measureInView();
    void measureDownFrom(int row, qint64 bottom);
    void measureUpFrom(int row);
    void showFrom(qint64 top);

    int m_estimatedHeight;
    BlockHeights m_heights;
    std::vector<bool> m_isMeasured;
    bool m_isMeasuring = false;
};
