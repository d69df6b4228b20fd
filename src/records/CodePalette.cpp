#include "records/CodePalette.h"

using namespace Qt::StringLiterals;

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
