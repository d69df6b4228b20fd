#include "records/CodePalette.h"

#include "records/TextTrimming.h"

#include <QString>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isHexDigit(QChar character)
{
    const char16_t unit = character.unicode();
    return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F');
}

} // namespace

std::optional<RGBComponents> RGBComponents::from(QStringView hex)
{
    QStringView digits = TextTrimming::trimmed(hex);
    if (digits.startsWith(u'#'))
        digits = digits.sliced(1);
    // QStringView::toUInt would take a sign or blanks for a number.
    if (digits.size() != 6 || !std::ranges::all_of(digits, isHexDigit))
        return {};
    const uint value = digits.toUInt(nullptr, 16);
    const auto component = [&](int shift) { return double((value >> shift) & 0xFF) / 255.0; };
    return RGBComponents{component(16), component(8), component(0)};
}

const std::array<PaletteColor, 9> &CodePalette::colors()
{
    static const std::array<PaletteColor, 9> palette{{
        {u"Indigo"_s, u"#5E5CE6"_s},
        {u"Blue"_s, u"#0A84FF"_s},
        {u"Teal"_s, u"#30B0C7"_s},
        {u"Green"_s, u"#34C759"_s},
        {u"Yellow"_s, u"#FFCC00"_s},
        {u"Orange"_s, u"#FF9500"_s},
        {u"Pink"_s, u"#FF2D55"_s},
        {u"Purple"_s, u"#AF52DE"_s},
        {u"Gray"_s, u"#8E8E93"_s},
    }};
    return palette;
}

const QString &CodePalette::hexForNewCode(qsizetype codeCount)
{
    return colors()[size_t(codeCount) % colors().size()].hex;
}
