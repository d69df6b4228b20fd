#include "kit/controls/PlainButton.h"

#include "kit/theme/Roles.h"
#include "kit/theme/Symbols.h"

PlainButton::PlainButton(const QString &symbol, const QString &label, QWidget *parent) : QPushButton(label, parent)
{
    constexpr int side = 11;
    setRole(*this, ButtonRole::plain, ButtonSize::small);
    setAutoDefault(false);
    setIconSize({side, side});
    if (!symbol.isEmpty())
        setIcon(Symbols::icon(symbol, Symbols::Tint::secondary, Symbols::semiboldStroke));
}

PlainButton *PlainButton::iconOnly(const QString &symbol, const QString &name, QWidget *parent)
{
    auto *button = new PlainButton(symbol, {}, parent);
    button->setAccessibleName(name);
    button->setToolTip(name);
    return button;
}
