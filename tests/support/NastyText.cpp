#include "support/NastyText.h"

#include <QStringView>

#include <array>
#include <string_view>

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

namespace {

constexpr std::u32string_view characters =
    U"abBtheTHE \t-'_09.,\r\n\r\n" // what most of every text is
    U"éÉœŒÿŸßẞµ\u00A0\u00AD©®" // Latin-1 and what lowers into or out of it
    U"\u0130ıſΣςσΩω\u2126\u212A\u212BǄǅǆϴθἈᾈﬁ" // case that isn't one to one
    U"\u0301\u0308\u0307\u0323\u0345\u0344\u0327" // marks
    U"\u1100\u1161\u11A8가각\u1112" // jamo and precomposed Hangul
    U"\u0E01\u0E33\u0915\u094D\u0937\u093C\u0958\u0CC6\u0CC2\u0CD5\u0CC0\u1B05\u1B35\u0F71\u0F72\u0F73" // Indic, Thai
    U"\u0600\u0D4E\U000110BD" // prepended
    U"\u200B\u200C\u200D\u200D\uFE0F\u20E3\u2764\u2139" // joiners and what they join
    U"\U0001F468\U0001F469\U0001F3FD\U0001F1E6\U0001F1E7" // emoji, flags
    U"一研究方法\u8C48\uF900\uFA0E\uFA10\uFA6C\U000242EE\U00020000〇々" // ideographs, some of which compose to others
    U"かがカ\u3099\uFF21\uFF3A\uFB2C\uFB1D\uFB50" // kana, full width, presentation forms
    U"\U00010400\U00010428\U0001E900" // cased letters of supplementary planes
    U"\u0085\u2028\u2029"
    U"\0"sv; // a text may hold it

constexpr std::array<char16_t, 6> unpaired{0xD800, 0xD801, 0xDBFF, 0xDC00, 0xDC28, 0xDFFF};

const std::array words{u"the"_s, u"don't"_s, u"Running"_s, u"e\u0301te\u0301"_s, u"été"_s, u"extraordinarily"_s,
    u"sixteenletterlon"_s, u"seventeenletterlo"_s, u"研究方法"_s, u"КНИГА"_s};

} // namespace

QString NastyText::piece()
{
    if (onceIn(12))
        return words[std::size_t(number(0, int(words.size()) - 1))];
    if (onceIn(20))
        return QString(number(8, 40), u'q') + u' ';
    if (onceIn(20))
        return QString(QChar(unpaired[std::size_t(number(0, int(unpaired.size()) - 1))]));
    const char32_t character = characters[std::size_t(number(0, int(characters.size()) - 1))];
    return QString::fromUcs4(&character, 1);
}

QString NastyText::next(int pieces)
{
    QString text;
    for (int count = number(0, pieces); count > 0; --count)
        text += piece();
    return text;
}
