#include "kit/theme/Theme.h"

#include "records/CodePalette.h"

#include <QApplication>

#include <initializer_list>

namespace {

QColor withAlpha(QColor color, double alpha)
{
    color.setAlphaF(float(alpha));
    return color;
}

QColor ink(double alpha)
{
    return withAlpha(QColor(0x1C, 0x1C, 0x21), alpha);
}

QColor slate(double alpha)
{
    return withAlpha(QColor(0x3C, 0x3C, 0x50), alpha);
}

QColor white(double alpha)
{
    return withAlpha(Qt::white, alpha);
}

/// The fills are the same in every look; text on them is white.
ThemeColors withFills(ThemeColors colors)
{
    colors.onAccent = Qt::white;
    colors.accentHover = QColor(0x5A, 0x57, 0xD0);
    colors.accentPressed = QColor(0x4E, 0x4B, 0xC0);
    colors.destructiveFill = QColor(0xCC, 0x33, 0x40);
    colors.destructiveHover = QColor(0xBE, 0x2B, 0x38);
    colors.destructivePressed = QColor(0xAD, 0x24, 0x31);
    return colors;
}

ThemeColors light()
{
    ThemeColors colors;
    colors.window = QColor(0xF7, 0xF7, 0xF9);
    colors.sidebar = QColor(0xF1, 0xF1, 0xF5);
    colors.content = QColor(0xFA, 0xFA, 0xFC);
    colors.page = QColor(0xFF, 0xFF, 0xFF);
    colors.sheet = QColor(0xFB, 0xFB, 0xFD);
    colors.raised = QColor(0xFC, 0xFC, 0xFE);
    colors.control = QColor(0xFF, 0xFF, 0xFF);
    colors.text = QColor(0x1C, 0x1C, 0x21);
    colors.secondary = QColor(0x59, 0x59, 0x65);
    colors.tertiary = QColor(0x6A, 0x6A, 0x76);
    colors.quaternary = QColor(0xC6, 0xC6, 0xD0);
    colors.accentText = QColor(0x5A, 0x57, 0xD0);
    colors.destructiveText = QColor(0xC4, 0x2B, 0x34);
    colors.hairline = QColor(0xE2, 0xE2, 0xE9);
    colors.raisedHairline = ink(.10);
    colors.raisedEdge = ink(.16);
    colors.controlEdge = ink(.17);
    colors.accentForeground = ThemeColors::accent;
    colors.selection = withAlpha(ThemeColors::accent, .15);
    colors.quietSelection = slate(.08);
    colors.hover = slate(.045);
    colors.textSelection = withAlpha(ThemeColors::accent, .24);
    colors.track = slate(.085);
    colors.knob = QColor(0xFF, 0xFF, 0xFF);
    colors.pill = withAlpha(ThemeColors::accent, .12);
    colors.wordBar = withAlpha(ThemeColors::accent, .35);
    colors.scrim = withAlpha(QColor(0x18, 0x18, 0x26), .16);
    colors.scrollThumb = slate(.25);
    return withFills(colors);
}

ThemeColors dark()
{
    // The accent's hue, lifted: the accent itself is too dark to be read on dark surfaces.
    const QColor liftedAccent(0xA5, 0xA3, 0xF4);
    ThemeColors colors;
    colors.look.isDark = true;
    colors.window = QColor(0x20, 0x20, 0x24);
    colors.sidebar = QColor(0x22, 0x22, 0x26);
    colors.content = QColor(0x1D, 0x1D, 0x21);
    colors.page = QColor(0x18, 0x18, 0x1B);
    colors.sheet = QColor(0x27, 0x27, 0x2C);
    colors.raised = QColor(0x2B, 0x2B, 0x31);
    colors.control = QColor(0x31, 0x31, 0x38);
    colors.text = QColor(0xE9, 0xE9, 0xEF);
    colors.secondary = QColor(0xAC, 0xAC, 0xB9);
    colors.tertiary = QColor(0x93, 0x93, 0xA0);
    colors.quaternary = QColor(0x4E, 0x4E, 0x59);
    colors.accentText = liftedAccent;
    colors.destructiveText = QColor(0xFF, 0x7B, 0x80);
    colors.hairline = QColor(0x33, 0x33, 0x3A);
    colors.raisedHairline = white(.10);
    colors.raisedEdge = white(.15);
    colors.controlEdge = white(.15);
    colors.accentForeground = liftedAccent;
    colors.selection = withAlpha(ThemeColors::accent, .30);
    colors.quietSelection = white(.085);
    colors.hover = white(.05);
    colors.textSelection = withAlpha(ThemeColors::accent, .46);
    colors.track = white(.08);
    colors.knob = QColor(0x4A, 0x4A, 0x54);
    colors.pill = withAlpha(ThemeColors::accent, .26);
    colors.wordBar = withAlpha(liftedAccent, .35);
    colors.scrim = withAlpha(Qt::black, .40);
    colors.scrollThumb = white(.25);
    return withFills(colors);
}

ThemeColors withHighContrast(ThemeColors colors)
{
    const QColor strongEdge = colors.look.isDark ? QColor(0x73, 0x73, 0x7F) : QColor(0x8A, 0x8A, 0x96);
    colors.look.hasHighContrast = true;
    for (QColor *edge : {&colors.hairline, &colors.raisedHairline, &colors.raisedEdge, &colors.controlEdge})
        *edge = strongEdge;
    colors.tertiary = colors.secondary;
    colors.secondary = colors.text;
    colors.scrollThumb = strongEdge;
    return colors;
}

ThemeColors &current()
{
    static ThemeColors colors = ThemeColors::of({});
    return colors;
}

} // namespace

ThemeColors ThemeColors::of(Look look)
{
    const ThemeColors colors = look.isDark ? dark() : light();
    return look.hasHighContrast ? withHighContrast(colors) : colors;
}

QPalette ThemeColors::palette() const
{
    QPalette palette;
    const std::initializer_list<std::pair<QPalette::ColorRole, QColor>> roles = {
        {QPalette::Window, window},
        {QPalette::WindowText, text},
        {QPalette::Base, page},
        {QPalette::AlternateBase, content},
        {QPalette::Text, text},
        {QPalette::PlaceholderText, tertiary},
        {QPalette::ToolTipBase, raised},
        {QPalette::ToolTipText, text},
        {QPalette::Button, control},
        {QPalette::ButtonText, text},
        {QPalette::BrightText, onAccent},
        {QPalette::Highlight, mixed(page, textSelection)},
        {QPalette::HighlightedText, text},
        {QPalette::Link, accentText},
        {QPalette::LinkVisited, accentText},
        {QPalette::Light, control},
        {QPalette::Midlight, quaternary},
        {QPalette::Mid, hairline},
        {QPalette::Dark, secondary},
        {QPalette::Shadow, Qt::black},
    };
    for (const auto &[role, color] : roles)
        palette.setColor(role, color);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, tertiary);
    return palette;
}

QColor mixed(const QColor &surface, const QColor &tint)
{
    const float alpha = tint.alphaF();
    const auto channel = [alpha](float below, float above) { return below + (above - below) * alpha; };
    return QColor::fromRgbF(channel(surface.redF(), tint.redF()), channel(surface.greenF(), tint.greenF()),
        channel(surface.blueF(), tint.blueF()));
}

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

QColor Theme::codeColor(const QString &hex)
{
    const auto components = RGBComponents::from(hex);
    return components ? QColor::fromRgbF(float(components->red), float(components->green), float(components->blue))
                      : ThemeColors::accent;
}
