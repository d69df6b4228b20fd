#include "kit/theme/Theme.h"

#include "kit/theme/ThemeColors.h"

#include <QApplication>

namespace {

ThemeColors &current()
{
    static ThemeColors colors = ThemeColors::of({});
    return colors;
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
