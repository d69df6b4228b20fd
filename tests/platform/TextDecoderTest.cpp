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
    QByteArray bytes;
    std::optional<QString> expected; ///< absent: refused
};

using TextDecoding = testing::TestWithParam<DecodingCase>;

TEST_P(TextDecoding, TakesOnlyWhatIsValid)
{
    EXPECT_EQ(GetParam().decoder(GetParam().bytes), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Utf8, TextDecoding,
    testing::Values(DecodingCase{"nothing_is_text", TextDecoder::utf8, {}, QString()},
        DecodingCase{"mark_is_no_text", TextDecoder::utf8,
            "\xEF\xBB\xBF"
            "a",
            u"a"_s},
        DecodingCase{"only_a_mark_is_empty", TextDecoder::utf8, "\xEF\xBB\xBF", QString()},
        DecodingCase{"second_mark_is_text", TextDecoder::utf8, "\xEF\xBB\xBF\xEF\xBB\xBF", u"\uFEFF"_s},
        DecodingCase{"mark_further_on_is_text", TextDecoder::utf8, "a\xEF\xBB\xBF", u"a\uFEFF"_s},
        DecodingCase{"half_a_mark", TextDecoder::utf8, "\xEF\xBB", {}},
        DecodingCase{"replacement_character_is_valid", TextDecoder::utf8, "\xEF\xBF\xBD", u"\uFFFD"_s},
        DecodingCase{"cut_after_long_ascii", TextDecoder::utf8, QByteArray(64, 'a') + "\xE4", {}}),
    rowName);

INSTANTIATE_TEST_SUITE_P(Utf16, TextDecoding,
    testing::Values(DecodingCase{"no_mark_no_guess", TextDecoder::utf16, QByteArray("a\0b\0", 4), {}},
        DecodingCase{"nothing_has_no_mark", TextDecoder::utf16, {}, {}},
        DecodingCase{"little_endian", TextDecoder::utf16,
            QByteArray("\xFF\xFE"
                       "a\0\xE1\x4F",
                6),
            u"a信"_s},
        DecodingCase{"big_endian", TextDecoder::utf16,
            QByteArray("\xFE\xFF"
                       "\0a\x4F\xE1",
                6),
            u"a信"_s},
        DecodingCase{"only_a_mark_is_empty", TextDecoder::utf16, "\xFF\xFE", QString()},
        DecodingCase{"half_a_unit", TextDecoder::utf16,
            QByteArray("\xFF\xFE"
                       "a\0b",
                5),
            {}},
        DecodingCase{"half_a_mark", TextDecoder::utf16, "\xFF", {}},
        DecodingCase{"second_mark_is_text", TextDecoder::utf16, "\xFF\xFE\xFF\xFE", u"\uFEFF"_s},
        DecodingCase{"swapped_mark_is_text", TextDecoder::utf16, "\xFF\xFE\xFE\xFF", u"\uFFFE"_s},
        DecodingCase{"pair_stays", TextDecoder::utf16, QByteArray("\xFE\xFF\xD8\x3D\xDE\x00", 6), u"\U0001F600"_s},
        DecodingCase{"high_half_alone", TextDecoder::utf16, QByteArray("\xFE\xFF\xD8\x3D\0a", 6), u"\uFFFDa"_s},
        DecodingCase{"low_half_alone", TextDecoder::utf16, QByteArray("\xFE\xFF\0a\xDE\x00", 6), u"a\uFFFD"_s},
        DecodingCase{
            "halves_in_wrong_order", TextDecoder::utf16, QByteArray("\xFE\xFF\xDE\x00\xD8\x3D", 6), u"\uFFFD\uFFFD"_s},
        DecodingCase{"half_before_a_pair", TextDecoder::utf16, QByteArray("\xFE\xFF\xD8\x3D\xD8\x3D\xDE\x00", 8),
            u"\uFFFD\U0001F600"_s}),
    rowName);

INSTANTIATE_TEST_SUITE_P(Gb18030, TextDecoding,
    testing::Values(DecodingCase{"nothing_is_text", TextDecoder::gb18030, {}, QString()},
        DecodingCase{"one_and_two_bytes", TextDecoder::gb18030, "a\xD0\xC5\r\n", u"a信\r\n"_s},
        DecodingCase{"four_bytes_one_unit", TextDecoder::gb18030, "\x81\x30\x8A\x35", u"ë"_s},
        DecodingCase{"four_bytes_a_pair", TextDecoder::gb18030, "\x94\x39\xFC\x36", u"\U0001F600"_s},
        DecodingCase{"last_scalar", TextDecoder::gb18030, "\xE3\x32\x9A\x35", u"\U0010FFFF"_s},
        DecodingCase{"mark_is_no_text", TextDecoder::gb18030,
            "\x84\x31\x95\x33"
            "a",
            u"a"_s},
        DecodingCase{"nul_stays", TextDecoder::gb18030, QByteArray("a\0b", 3), QString::fromLatin1("a\0b", 3)},
        DecodingCase{"cut_after_one_of_two", TextDecoder::gb18030, "a\xD0", {}},
        DecodingCase{"cut_after_three_of_four", TextDecoder::gb18030, "\x94\x39\xFC", {}},
        DecodingCase{"lead_before_a_line_feed", TextDecoder::gb18030, "\xE9\n", {}},
        DecodingCase{"no_such_lead", TextDecoder::gb18030, "a\xFF", {}},
        DecodingCase{"beyond_unicode", TextDecoder::gb18030, "\xE3\x32\x9A\x36", {}}),
    rowName);

TEST(TextDecoder, Latin1TakesEveryByteAsItsOwnCharacter)
{
    QByteArray bytes;
    QString expected;
    for (int byte = 0; byte < 256; ++byte) {
        bytes.append(char(byte));
        expected.append(QChar(char16_t(byte)));
    }
    EXPECT_EQ(TextDecoder::latin1(bytes), expected);
}

/// Well-formed sequences as the standard's table of bytes lists them.
bool isWellFormedUtf8(QByteArrayView bytes)
{
    qsizetype index = 0;
    const auto isNext = [&](uchar least, uchar most) {
        const bool fits = index < bytes.size() && uchar(bytes[index]) >= least && uchar(bytes[index]) <= most;
        ++index;
        return fits;
    };
    while (index < bytes.size()) {
        const auto lead = uchar(bytes[index++]);
        if (lead < 0x80)
            continue;
        if (lead < 0xC2 || lead > 0xF4)
            return false;
        const uchar least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
        const uchar most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
        if (!isNext(least, most) || (lead >= 0xE0 && !isNext(0x80, 0xBF)) || (lead >= 0xF0 && !isNext(0x80, 0xBF)))
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

TEST(TextDecoder, NoFourBytesOfGb18030BecomeHalfAPair)
{
    for (int code = 0; code < 126 * 10 * 126 * 10; ++code) {
        const char bytes[]{char(0x81 + code / 12'600), char(0x30 + code / 1'260 % 10), char(0x81 + code / 10 % 126),
            char(0x30 + code % 10)};
        const QString text = TextDecoder::gb18030(QByteArrayView(bytes, 4)).value_or(QString());
        ASSERT_TRUE(text.isValidUtf16()) << QByteArrayView(bytes, 4).toByteArray().toHex().constData();
    }
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
