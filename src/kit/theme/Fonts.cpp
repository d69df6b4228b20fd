#include "kit/theme/Fonts.h"

#include <QFontDatabase>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

const QStringList &families()
{
    static const QStringList families{u"Inter"_s, QFontDatabase::systemFont(QFontDatabase::GeneralFont).family(),
        u"Noto Sans"_s, u"Noto Sans CJK SC"_s, u"DejaVu Sans"_s};
    return families;
}

/// `size` in pixels at 96 dpi, `tracking` as a share of it.
QFont style(double size, QFont::Weight weight, double tracking = 0)
{
    constexpr double pointsPerPixel = .75;
    QFont font;
    font.setFamilies(families());
    font.setPointSizeF(size * pointsPerPixel);
    font.setWeight(weight);
    if (tracking != 0)
        font.setLetterSpacing(QFont::AbsoluteSpacing, size * tracking);
    return font;
}

} // namespace

QFont Fonts::readerTitle()
{
    return style(21, QFont::DemiBold, -.014);
}

QFont Fonts::thirdTitle()
{
    return style(16, QFont::DemiBold);
}

QFont Fonts::columnTitle()
{
    return style(15, QFont::DemiBold);
}

QFont Fonts::headline()
{
    return style(14, QFont::DemiBold);
}

QFont Fonts::body()
{
    return style(13, QFont::Normal);
}

QFont Fonts::bodyMedium()
{
    return style(13, QFont::Medium);
}

QFont Fonts::callout()
{
    return style(12, QFont::Normal, -.012);
}

QFont Fonts::calloutMedium()
{
    return style(12, QFont::Medium);
}

QFont Fonts::caption()
{
    return style(11, QFont::Normal);
}

QFont Fonts::sectionHead()
{
    return style(11, QFont::DemiBold);
}

QFont Fonts::pill()
{
    QFont font = style(10, QFont::DemiBold);
    font.setCapitalization(QFont::AllUppercase);
    return font;
}

QFont Fonts::reader()
{
    return style(14.5, QFont::Normal);
}

QFont Fonts::memo()
{
    return style(12.5, QFont::Normal);
}
