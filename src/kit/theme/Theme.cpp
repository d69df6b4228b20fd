#include "kit/theme/Theme.h"

#include "kit/theme/Appearance.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/ThemeColors.h"
#include "kit/theme/VornStyle.h"

#include <QApplication>

namespace {

ThemeColors &current()
{
    static ThemeColors colors = ThemeColors::of({});
    return colors;
}

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

const ThemeColors &Theme::colors()
{
    return current();
}

void Theme::setLook(Look look)
{
    current() = ThemeColors::of(look);
    QApplication::setPalette(current().palette());
    QPalette onTrack = current().palette();
    onTrack.setColor(QPalette::PlaceholderText, current().secondary); // tertiary is too pale on the track
    QApplication::setPalette(onTrack, "SearchField");
}

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
