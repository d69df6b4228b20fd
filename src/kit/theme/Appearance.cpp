#include "kit/theme/Appearance.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

double linear(double channel)
{
    return channel <= .04045 ? channel / 12.92 : std::pow((channel + .055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return .2126 * linear(color.redF()) + .7152 * linear(color.greenF()) + .0722 * linear(color.blueF());
}

} // namespace

double contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + .05) / (darker + .05);
}

Appearance::Appearance(const DesktopSettings &settings, QPalette platformPalette)
    : m_settings(settings),
      m_platformPalette(std::move(platformPalette)),
      m_look{wantsDark(), wantsHighContrast()},
      m_reducesMotion(wantsReducedMotion())
{
    connect(&m_settings, &DesktopSettings::changed, this, &Appearance::read);
}

void Appearance::read()
{
    const Look look{wantsDark(), wantsHighContrast()};
    const bool reducesMotion = wantsReducedMotion();
    if (look == m_look && reducesMotion == m_reducesMotion)
        return;
    m_look = look;
    m_reducesMotion = reducesMotion;
    Q_EMIT changed();
}

bool Appearance::wantsDark() const
{
    constexpr int prefersDark = 1;
    constexpr int prefersLight = 2;
    const int scheme = m_settings.value(u"org.freedesktop.appearance"_s, u"color-scheme"_s).toInt();
    if (scheme == prefersDark || scheme == prefersLight)
        return scheme == prefersDark;
    return m_platformPalette.color(QPalette::Window).lightnessF() < .5;
}

bool Appearance::wantsHighContrast() const
{
    // The stock palette reaches 18 by itself.
    constexpr double unusual = 20;
    return m_settings.value(u"org.freedesktop.appearance"_s, u"contrast"_s).toInt() == 1
        || contrast(m_platformPalette.color(QPalette::Window), m_platformPalette.color(QPalette::WindowText)) > unusual;
}

bool Appearance::wantsReducedMotion() const
{
    const QVariant animates = m_settings.value(u"org.gnome.desktop.interface"_s, u"enable-animations"_s);
    return m_settings.value(u"org.freedesktop.appearance"_s, u"reduced-motion"_s).toInt() == 1
        || (animates.isValid() && !animates.toBool());
}
