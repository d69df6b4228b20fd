#include "kit/controls/Accessible.h"

#include <QAccessibleWidget>
#include <QWidget>

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

QAccessibleInterface *describe(const QString &, QObject *object)
{
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
