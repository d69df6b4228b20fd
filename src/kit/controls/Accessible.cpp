#include "kit/controls/Accessible.h"

#include <QAccessibleWidget>
#include <QDialog>

namespace {

class AccessibleControl final : public QAccessibleWidget {
public:
    AccessibleControl(QWidget &widget, const HasAccessibleRole &control)
        : QAccessibleWidget(&widget, control.accessibleRole()),
          m_control(control)
    {
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? m_control.accessibleValue() : QAccessibleWidget::text(kind);
    }

private:
    const HasAccessibleRole &m_control;
};

/// Qt doesn't report to screen readers that a dialog is modal.
class AccessibleDialog final : public QAccessibleWidget {
public:
    explicit AccessibleDialog(QDialog &dialog) : QAccessibleWidget(&dialog, QAccessible::Dialog) { }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.modal = widget()->isModal();
        return state;
    }
};

QAccessibleInterface *describe(const QString &, QObject *object)
{
    if (auto *dialog = qobject_cast<QDialog *>(object))
        return new AccessibleDialog(*dialog);
    const auto *control = dynamic_cast<const HasAccessibleRole *>(object);
    auto *widget = qobject_cast<QWidget *>(object);
    return control != nullptr && widget != nullptr ? new AccessibleControl(*widget, *control) : nullptr;
}

} // namespace

HasAccessibleRole::HasAccessibleRole()
{
    [[maybe_unused]] static const bool isInstalled = (QAccessible::installFactory(describe), true);
}

void announceValue(QWidget &control, const QString &value)
{
    QAccessibleValueChangeEvent event(&control, value);
    QAccessible::updateAccessibility(&event);
}
