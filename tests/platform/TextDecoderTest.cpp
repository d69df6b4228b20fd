#include "platform/TextDecoder.h"

#include "support/Cases.h"

#include <QList>
#include <QRandomGenerator>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Decoder = std::optional<QString> (*)(QByteArrayView);

struct DecodingCase {
    const char *name;
    Decoder decoder;
    const char *bytes; ///< in hexadecimal digits
    std::optional<QString> expected; ///< absent: refused
};

using TextDecoding = testing::TestWithParam<DecodingCase>;

TEST_P(TextDecoding, TakesOnlyWhatIsValid)
{
    EXPECT_EQ(GetParam().decoder(QByteArray::fromHex(GetParam().bytes)), GetParam().expected);
}

using TextDecoder::gb18030, TextDecoder::utf16, TextDecoder::utf8;
INSTANTIATE_TEST_SUITE_P(, TextDecoding,
    testing::Values(DecodingCase{"utf8_mark_is_dropped", utf8, "efbbbf 61", u"a"_s},
        DecodingCase{"utf8_second_mark_is_text", utf8, "efbbbf efbbbf", u"\uFEFF"_s},
        DecodingCase{"utf8_half_a_mark", utf8, "efbb", {}},
        DecodingCase{"utf16_without_a_mark", utf16, "6100 6200", {}},
        DecodingCase{"utf16_little_endian", utf16, "fffe 6100 e14f", u"a信"_s},
        DecodingCase{"utf16_big_endian", utf16, "feff 0061 4fe1", u"a信"_s},
        DecodingCase{"utf16_only_a_mark", utf16, "fffe", QString()},
        DecodingCase{"utf16_half_a_unit", utf16, "fffe 6100 62", {}},
        DecodingCase{"utf16_second_mark_is_text", utf16, "fffe fffe", u"\uFEFF"_s},
        DecodingCase{"utf16_pair", utf16, "feff d83d de00", u"\U0001F600"_s},
        DecodingCase{"utf16_surrogates_in_wrong_order", utf16, "feff de00 d83d", u"\uFFFD\uFFFD"_s},
        DecodingCase{"utf16_surrogate_before_a_pair", utf16, "feff d83d d83d de00", u"\uFFFD\U0001F600"_s},
        DecodingCase{"gb18030_mark_is_dropped", gb18030, "84319533 61", u"a"_s},
        DecodingCase{"gb18030_pair", gb18030, "9439fc36", u"\U0001F600"_s},
        DecodingCase{"gb18030_nul", gb18030, "61 00 62", QString::fromLatin1("a\0b", 3)},
        DecodingCase{"gb18030_cut_off", gb18030, "9439fc", {}}, DecodingCase{"gb18030_invalid", gb18030, "61ff", {}}),
    rowName);

/// Well-formed sequences as the standard's table of bytes lists them.
bool isWellFormedUtf8(QByteArrayView bytes)
{
    qsizetype index = 0;
    const auto isNext = [&](uchar min, uchar max) {
        const bool fits = index < bytes.size() && uchar(bytes[index]) >= min && uchar(bytes[index]) <= max;
        ++index;
        return fits;
    };
    while (index < bytes.size()) {
        const auto lead = uchar(bytes[index++]);
        if (lead < 0x80)
            continue;
        if (lead < 0xC2 || lead > 0xF4)
            return false;
        const uchar min = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
        const uchar max = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
        if (!isNext(min, max) || (lead >= 0xE0 && !isNext(0x80, 0xBF)) || (lead >= 0xF0 && !isNext(0x80, 0xBF)))
            return false;
    }
    return true;
}

TEST(TextDecoder, TakesAsUtf8ExactlyWhatIsWellFormedAndLosesNothing)
{
    const QList<QByteArray> pieces{"a", "\n", "\xC3\xA9", "\xE4\xBF\xA1", "\xF0\x9F\x98\x80", "\xED\x9F\xBF",
        "\xEF\xBF\xBF", "abcdefghijklmnopqrstuvwxyzabcdefghij", "\x80", "\xC3", "\xE4\xBF", "\xF0\x9F\x98",
        "\xED\xA0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xFF",
        QByteArray(1, '\0')};
    constexpr int wellFormedPieces = 8;
    QRandomGenerator random(20);
    int taken = 0;
    for (int round = 0; round < 100'000; ++round) {
        QByteArray bytes;
        const int choices = random.bounded(4) == 0 ? int(pieces.size()) : wellFormedPieces;
        for (int count = random.bounded(12); count > 0; --count)
            bytes += pieces[random.bounded(choices)];
        const std::optional<QString> text = TextDecoder::utf8(bytes);
        ASSERT_EQ(text.has_value(), isWellFormedUtf8(bytes)) << bytes.toHex().constData();
        taken += text.has_value();
        ASSERT_EQ(text.value_or(QString()).toUtf8(), text ? bytes : QByteArray());
    }
    EXPECT_GT(taken, 60'000);
    EXPECT_LT(taken, 95'000);
}

TEST(TextDecoder, CharactersOfGb18030MayLieAcrossAnyBoundaryWithinALongText)
{
    for (int shift = 0; shift < 4; ++shift) {
        const QByteArray bytes = QByteArray(shift, 'a') + QByteArray("\x94\x39\xFC\x36").repeated(600'000);
        const QString expected = QString(shift, u'a') + u"\U0001F600"_s.repeated(600'000);
        EXPECT_TRUE(TextDecoder::gb18030(bytes) == expected) << shift;
    }
}

} // namespace
