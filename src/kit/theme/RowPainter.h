#pragma once

#include <QRectF>

class QPainter;
class QStyleOptionViewItem;

/// How a row of a list stands at the moment.
struct RowState {
    bool isSelected = false;
    bool isHovered = false;
    bool listHasFocus = false;
    bool isCurrent = false; ///< where the keyboard is

    /// As an item view tells its delegate.
    [[nodiscard]] static RowState of(const QStyleOptionViewItem &option);
};

/// The ground of a row, the same in every list: a rounded tint that tells selection and hover, and an inner ring around
/// the current row where no selection shows it.
class RowPainter {
public:
    /// The row's fill stands `inset` away from the list's left and right edges.
    RowPainter(int inset, double radius) : m_inset(inset), m_radius(radius) { }

    [[nodiscard]] QRectF fillRect(const QRectF &row) const;
    void paint(QPainter &painter, const QRectF &row, RowState state) const;

private:
    int m_inset;
    double m_radius;
};
