#include "kit/theme/Roles.h"

#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"

#include <QAbstractButton>
#include <QAction>
#include <QLineEdit>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace {

constexpr const char *roleProperty = "vornRole";
constexpr const char *sizeProperty = "vornSize";

QString nameOf(ButtonRole role)
{
    switch (role) {
    case ButtonRole::bordered:
        return u"bordered"_s;
    case ButtonRole::prominent:
        return u"prominent"_s;
    case ButtonRole::destructive:
        return u"destructive"_s;
    case ButtonRole::plain:
        return u"plain"_s;
    }
    Q_UNREACHABLE();
}

QFont fontFor(ButtonRole role, ButtonSize size)
{
    if (role == ButtonRole::plain)
        return Fonts::callout();
    return size == ButtonSize::regular ? Fonts::bodyMedium() : Fonts::calloutMedium();
}

} // namespace

void setRole(QAbstractButton &button, ButtonRole role, ButtonSize size)
{
    button.setProperty(roleProperty, nameOf(role));
    button.setProperty(sizeProperty, int(size));
    button.setFont(fontFor(role, size));
    button.updateGeometry();
    button.update();
}

ButtonRole roleOf(const QWidget &button)
{
    const QString name = button.property(roleProperty).toString();
    for (const ButtonRole role : {ButtonRole::prominent, ButtonRole::destructive, ButtonRole::plain}) {
        if (name == nameOf(role))
            return role;
    }
    return ButtonRole::bordered;
}

ButtonSize sizeOf(const QWidget &button)
{
    return ButtonSize(button.property(sizeProperty).toInt());
}

double cornerRadiusOf(const QWidget &button, double height)
{
    switch (sizeOf(button)) {
    case ButtonSize::regular:
        return roleOf(button) == ButtonRole::plain ? Metrics::smallButtonRadius : Metrics::controlRadius;
    case ButtonSize::small:
        return Metrics::smallButtonRadius;
    case ButtonSize::capsule:
        return height / 2;
    }
    Q_UNREACHABLE();
}

void setSearchRole(QLineEdit &field)
{
    field.setProperty(roleProperty, u"search"_s);
}

bool hasSearchRole(const QWidget &field)
{
    return field.property(roleProperty).toString() == u"search";
}

void setDestructive(QAction &action)
{
    action.setProperty(roleProperty, nameOf(ButtonRole::destructive));
}

bool isDestructive(const QAction &action)
{
    return action.property(roleProperty).toString() == nameOf(ButtonRole::destructive);
}
