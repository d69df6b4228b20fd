#pragma once

#include "kit/controls/Accessible.h"

#include <QWidget>

/// The line at the sidebar's bottom that says where everything is kept.
class SidebarFooter final : public QWidget, public HasAccessibleRole {
    Q_OBJECT

public:
    explicit SidebarFooter(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::StaticText; }

protected:
    void paintEvent(QPaintEvent *event) override;
};
