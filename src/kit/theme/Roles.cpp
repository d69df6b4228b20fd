#include "kit/theme/Roles.h"

#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"

#include <QAbstractButton>
#include <QAction>
#include <QLineEdit>
#include <QVariant>

namespace {

constexpr const char *roleProperty = "vornRole";
constexpr const char *sizeProperty = "vornSize";
constexpr const char *searchProperty = "vornIsSearch";
constexpr const char *destructiveProperty = "vornIsDestructive";

QFont fontFor(ButtonRole role, ButtonSize size)
{
    if (role == ButtonRole::plain)
        return Fonts::callout();
    return size == ButtonSize::regular ? Fonts::bodyMedium() : Fonts::calloutMedium();
}

} // namespace

void setRole(QAbstractButton &button, ButtonRole role, ButtonSize size)
{
    button.setProperty(roleProperty, int(role));
    button.setProperty(sizeProperty, int(size));
    button.setFont(fontFor(role, size));
    button.updateGeometry();
    button.update();
}

ButtonRole roleOf(const QWidget &button)
{
    return ButtonRole(button.property(roleProperty).toInt());
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
    field.setProperty(searchProperty, true);
}

bool hasSearchRole(const QWidget &field)
{
    return field.property(searchProperty).toBool();
}

void setDestructive(QAction &action)
{
    action.setProperty(destructiveProperty, true);
}

bool isDestructive(const QAction &action)
{
    return action.property(destructiveProperty).toBool();
}

QFrame *makeHairline(QFrame::Shadow shadow)
{
    auto *line = new QFrame;
    line->setFrameStyle(QFrame::HLine | int(shadow));
    line->setFixedHeight(1);
    return line;
}
