#pragma once

#include <QSpinBox>

/// A spin box without an editor: two cells that lower and raise a value which a label beside it shows. The arrow keys
/// do the same.
class Stepper final : public QSpinBox {
    Q_OBJECT

public:
    /// `minimum` is the first value, and must not be above `maximum`.
    Stepper(int minimum, int maximum, QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
};
