#pragma once

#include <QAccessible>
#include <QString>

/// For painted controls that no class of Qt's describes to screen readers.
class HasAccessibleRole {
public:
    HasAccessibleRole();
    virtual ~HasAccessibleRole() = default;

    [[nodiscard]] virtual QAccessible::Role accessibleRole() const = 0;
    /// What the control says at the moment, read after its name. Empty for most.
    [[nodiscard]] virtual QString accessibleValue() const { return {}; }
};

class QWidget;

/// Tells screen readers that the value of `control` has changed.
void announceValue(QWidget &control, const QString &value);
