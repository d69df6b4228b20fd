#pragma once

#include "kit/controls/Accessible.h"
#include "kit/theme/FocusRing.h"

#include <QTimer>
#include <QWidget>

/// Two cells that lower and raise a number within its range. Held down, a cell repeats; the arrow keys do the same.
class Stepper final : public QWidget, public HasFocusOutline, public HasAccessibleRole {
    Q_OBJECT

public:
    /// `minimum` is the first value, and must not be above `maximum`.
    Stepper(int minimum, int maximum, QWidget *parent = nullptr);

    [[nodiscard]] int value() const { return m_value; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    [[nodiscard]] FocusOutline focusOutline() const override;
    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::SpinBox; }
    [[nodiscard]] QString accessibleValue() const override { return QString::number(m_value); }

    /// Values beyond the range become its nearest end.
    void setValue(int value);

Q_SIGNALS:
    /// Only when it is another one than before.
    void valueChanged(int value);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    enum class Cell { none, lower, raise };

    [[nodiscard]] QRect body() const;
    [[nodiscard]] QRect rectOf(Cell cell) const;
    [[nodiscard]] Cell cellAt(const QPoint &position) const;
    [[nodiscard]] bool canStep(Cell cell) const;
    void stepBy(int steps);
    void step();
    void paintCell(QPainter &painter, Cell cell, const QString &symbol) const;

    int m_minimum;
    int m_maximum;
    int m_value;
    Cell m_pressed = Cell::none;
    Cell m_hovered = Cell::none;
    QTimer m_repeat;
};
