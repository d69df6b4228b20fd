#include "kit/theme/Appearance.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Theme.h"
#include "kit/theme/VornStyle.h"

#include <QApplication>

namespace {

/// Platforms give some classes of widgets fonts of their own, which would win over the application's.
void setFonts()
{
    QApplication::setFont(Fonts::body());
    for (const char *widget : {"QMenu", "QMenuBar", "QLineEdit", "QComboBox", "QComboMenuItem", "QAbstractItemView"})
        QApplication::setFont(Fonts::body(), widget);
    QApplication::setFont(Fonts::bodyMedium(), "QPushButton");
    QApplication::setFont(Fonts::memo(), "QTextEdit");
    QApplication::setFont(Fonts::caption(), "QTipLabel");
}

} // namespace

/// Not in Theme.cpp: the style reads Theme, and Theme knows no style.
void Theme::follow(const Appearance &appearance)
{
    auto *style = new VornStyle;
    const auto show = [&appearance, style] {
        style->setReducesMotion(appearance.reducesMotion());
        setLook(appearance.look());
    };
    QApplication::setStyle(style);
    setFonts();
    show();
    QObject::connect(&appearance, &Appearance::changed, style, show);
}
