#pragma once

#include "kit/theme/Shadow.h"

#include <QWidget>

class QHBoxLayout;

/// A raised pill that floats over a column and holds a row of things. The widget is larger than the pill by the reach
/// of its shadow: place it by `moveBody`. Brought in and taken out by a `Transition`.
class Capsule : public QWidget {
    Q_OBJECT

public:
    /// `padding` is between the pill's border and its row.
    Capsule(const Shadow &shadow, const QMargins &padding, QWidget *parent = nullptr);

    /// The row to add to.
    [[nodiscard]] QHBoxLayout &row() const { return *m_row; }
    /// The pill itself, in the widget's coordinates.
    [[nodiscard]] QRect bodyRect() const;
    /// How large the pill wants to be.
    [[nodiscard]] QSize bodySizeHint() const;

    /// Gives the pill the size it wants and puts its left top corner to `position` of the parent widget.
    void moveBody(const QPoint &position);
    /// In the middle of the parent's width, `distance` above its bottom edge, and never wider than the parent.
    void placeAtBottom(int distance);
    /// In the middle of the parent's width, `distance` below its top edge.
    void placeAtTop(int distance);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QSize fittingSize() const;

    Shadow m_shadow;
    QHBoxLayout *m_row;
};
