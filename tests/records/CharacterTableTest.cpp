#include "records/CharacterTable.h"
#include "records/TextTrimming.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"

#include <gtest/gtest.h>

#include <unicode/uchar.h>

using namespace Qt::StringLiterals;

namespace {

QString unitText(char32_t unit)
{
    return QString(QChar(char16_t(unit)));
}

template <typename Check>
void forEachUnit(Check check)
{
    for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
        check(char16_t(unit), CharacterTable::shared()[char16_t(unit)]);
        if (testing::Test::HasFailure()) {
            ADD_FAILURE() << "at unit " << std::hex << unsigned(unit);
            return;
        }
    }
}

} // namespace

TEST(CharacterTable, ClassifiesEveryUnitAsICU)
{
    forEachUnit([](char16_t unit, const CharacterTable::Entry &entry) {
        const bool isSurrogate = unit >= 0xD800 && unit <= 0xDFFF;
        const bool isIdeograph = u_hasBinaryProperty(unit, UCHAR_IDEOGRAPHIC);
        const bool isAlphanumeric = (U_MASK(u_charType(unit)) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0;
        EXPECT_EQ(entry.has(CharacterTable::surrogate), isSurrogate);
        EXPECT_EQ(entry.has(CharacterTable::ideograph), isIdeograph);
        EXPECT_EQ(entry.has(CharacterTable::word), isAlphanumeric && !isIdeograph);
        EXPECT_EQ(entry.has(CharacterTable::blank), u_charType(unit) == U_SPACE_SEPARATOR || unit == u'\t');
        EXPECT_EQ(TextTrimming::isBlank(unit), entry.has(CharacterTable::blank));
        EXPECT_EQ(TextTrimming::isLineBreak(unit), u"\n\v\f\r\u0085\u2028\u2029"_s.contains(QChar(unit)));
    });
}

TEST(CharacterTable, LowersEveryUnitAsICUOrSaysThatItCannot)
{
    forEachUnit([](char16_t unit, const CharacterTable::Entry &entry) {
        const QString lowered = PlainAnalysis::lowered(unitText(unit));
        EXPECT_EQ(CharacterTable::lowered(unitText(unit)), lowered);
        const bool isLowersApart = lowered.size() != 1 || entry.has(CharacterTable::surrogate);
        EXPECT_EQ(entry.has(CharacterTable::lowersApart), isLowersApart);
        if (!isLowersApart) {
            EXPECT_EQ(lowered, unitText(entry.lower));
            EXPECT_EQ(entry.has(CharacterTable::wideLower), entry.lower > 0xFF);
        }
    });
}

TEST(CharacterTable, MarksEveryUnitThatComposesOrJoinsItsNeighbours)
{
    forEachUnit([](char16_t unit, const CharacterTable::Entry &entry) {
        EXPECT_FALSE(unit < 0x80 && entry.has(CharacterTable::joins)) << "would make counting slow";
        if (!entry.has(CharacterTable::joins)) {
            EXPECT_EQ(PlainAnalysis::characterCount(u'a' + unitText(unit) + u'가'), 3);
            EXPECT_EQ(PlainAnalysis::characterCount(unitText(unit) + unitText(unit)), 2);
        }
        if (!entry.has(CharacterTable::word | CharacterTable::ideograph) || entry.has(CharacterTable::complex))
            return;
        const QString text = u"a"_s + unitText(entry.lower).repeated(3);
        EXPECT_EQ(PlainAnalysis::composed(text), text);
        EXPECT_EQ(PlainAnalysis::characterCount(text), 4);
    });
}

TEST(CharacterTable, LowersAndComposesNastyTextsAsICU)
{
    NastyText nasty(1);
    for (int round = 0; round < 10'000; ++round) {
        const QString text = nasty.next(40);
        ASSERT_EQ(CharacterTable::lowered(text), PlainAnalysis::lowered(text)) << "round " << round;
        ASSERT_EQ(CharacterTable::composed(text), PlainAnalysis::composed(text)) << "round " << round;
    }
}

TEST(CharacterTable, ComposesAlsoWhatGrows)
{
    // The Hebrew letter shin with dagesh and sin dot is one unit, and three when composed.
    EXPECT_EQ(CharacterTable::composed(QString(1000, QChar(0xFB2D))).size(), 3000);
}

TEST(TextTrimming, TakesOnlyWhatSurrounds)
{
    EXPECT_EQ(TextTrimming::trimmed(u" \r\n\u3000a \n b\u2029\t"_s).toString(), u"a \n b"_s);
    EXPECT_EQ(TextTrimming::trimmedBlanks(u"\t\u00A0\n a \r\n "_s).toString(), u"\n a \r\n"_s);
    EXPECT_EQ(TextTrimming::trimmed(u" \u200B\xD800\uFEFF\n"_s).toString(), u"\u200B\xD800\uFEFF"_s);
    EXPECT_EQ(TextTrimming::trimmed(u" \t \u00A0"_s).toString(), QString());
}
