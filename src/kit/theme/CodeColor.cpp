#include "kit/theme/CodeColor.h"

#include "kit/theme/ThemeColors.h"
#include "records/RGBComponents.h"

QColor CodeColor::orAccent(const QString &hex)
{
    const auto components = RGBComponents::from(hex);
    return components ? QColor::fromRgbF(float(components->red), float(components->green), float(components->blue))
                      : ThemeColors::accent;
}
