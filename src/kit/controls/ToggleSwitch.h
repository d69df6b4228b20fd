#pragma once

#include "kit/theme/FocusRing.h"

#include <QCheckBox>

/// A check box in the shape of a switch. Its label stands beside it and is given to screen readers by
/// `setAccessibleName`. On and off differ in shape, not only in colour.
class ToggleSwitch final : public QCheckBox, public HasFocusOutline {
    Q_OBJECT

public:
    explicit ToggleSwitch(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    [[nodiscard]] FocusOutline focusOutline() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    [[nodiscard]] bool hitButton(const QPoint &position) const override { return rect().contains(position); }
};
