#include "records/database/ValueEncoding.h"
#include "records/CodePalette.h"
#include "records/UuidSource.h"
#include "records/database/DatabaseError.h"

#include <QTimeZone>

#include <gtest/gtest.h>

#include <limits>
#include <set>

using namespace Qt::StringLiterals;

namespace {

ValueView text(QByteArrayView bytes)
{
    return {.kind = ValueView::Kind::text, .bytes = bytes};
}
ValueView blob(QByteArrayView bytes)
{
    return {.kind = ValueView::Kind::blob, .bytes = bytes};
}
ValueView integer(qint64 value)
{
    return {.kind = ValueView::Kind::integer, .integer = value, .bytes = {}};
}
ValueView real(double value)
{
    return {.kind = ValueView::Kind::real, .real = value, .bytes = {}};
}

} // namespace

TEST(StoredDate, IsReadAsTheMomentItNames)
{
    const struct {
        const char *name;
        ValueView stored;
        const char *expected; ///< as written back; null for a refused value
    } rows[]{
        {"own_form_with_milliseconds", text("2026-03-01 09:05:07.042"), "2026-03-01 09:05:07.042"},
        {"day_alone", text("2026-03-01"), "2026-03-01 00:00:00.000"},
        {"no_seconds", text("2026-03-01 09:05"), "2026-03-01 09:05:00.000"},
        {"t_between", text("2026-03-01T09:05:07"), "2026-03-01 09:05:07.000"},
        {"zulu", text("2026-03-01T09:05:07Z"), "2026-03-01 09:05:07.000"},
        {"one_digit_of_a_second", text("2026-03-01 09:05:07.5"), "2026-03-01 09:05:07.500"},
        {"microseconds_are_cut", text("2026-03-01 09:05:07.123999"), "2026-03-01 09:05:07.123"},
        {"zone_east_crosses_midnight", text("2026-03-01 00:30+02:00"), "2026-02-28 22:30:00.000"},
        {"zone_west_behind_a_blank", text("2026-03-01T23:00:00.250 -05:30"), "2026-03-02 04:30:00.250"},
        {"zone_of_14_hours", text("2026-03-02 00:00+14:59"), "2026-03-01 09:01:00.000"},
        {"time_alone", text("12:30:15"), "2000-01-01 12:30:15.000"},
        {"blob_of_text", blob("2026-03-01 09:05:07.042"), "2026-03-01 09:05:07.042"},
        {"whole_seconds", integer(1'772'355'907), "2026-03-01 09:05:07.000"},
        {"real_seconds", real(1'772'355'907.042), "2026-03-01 09:05:07.042"},
        {"seconds_before_1970", real(-0.5), "1969-12-31 23:59:59.500"},
        {"last_moment", text("9999-12-31 23:59:59.999"), "9999-12-31 23:59:59.999"},
        {"enormous_integer", integer(std::numeric_limits<qint64>::max()), nullptr},
        {"enormous_real", real(1e300), nullptr},
        {"real_that_rounds_up_to_year_10000", real(253'402'300'799.9999), nullptr},
        {"zone_before_the_first_year", text("0001-01-01 00:00+01:00"), nullptr},
        {"year_0_in_seconds", integer(-62'150'000'000), nullptr},
        {"not_a_number", real(std::numeric_limits<double>::quiet_NaN()), nullptr},
        {"zone_beyond_the_last_year", text("9999-12-31 23:59:59-14:00"), nullptr},
        {"zone_of_15_hours", text("2026-03-02 00:00+15:00"), nullptr},
        {"zone_of_60_minutes", text("2026-03-02 00:00+01:60"), nullptr},
        {"first_moment", text("0001-01-01"), "0001-01-01 00:00:00.000"},
        {"thirteenth_month", text("2026-13-01"), nullptr},
        {"thirtieth_of_february", text("2026-02-30"), nullptr},
        {"hour_24", text("2026-03-01 24:00"), nullptr},
        {"rest_behind", text("2026-03-01x"), nullptr},
        {"point_without_digits", text("2026-03-01 09:05:07."), nullptr},
        {"empty", text(""), nullptr},
        {"null", {}, nullptr},
    };
    for (const auto &[name, stored, expected] : rows) {
        SCOPED_TRACE(name);
        const auto date = ValueEncoding::date(stored);
        ASSERT_EQ(date.has_value(), expected != nullptr);
        if (date) {
            EXPECT_EQ(std::get<TextValue>(ValueEncoding::encoded(*date)).utf8, QByteArray(expected));
        }
    }
}

TEST(StoredIdentifier, IsWrittenAsItsSixteenBytesAndReadInAnyForm)
{
    const QUuid id(u"6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11"_s);
    const auto written = std::get<BlobValue>(ValueEncoding::encoded(id)).bytes;
    EXPECT_EQ(written.toHex(), "6f1d2a900e254a1b9c4e7b8a5f2d3e11");
    EXPECT_EQ(ValueEncoding::identifier(blob(written)), id);
    EXPECT_EQ(ValueEncoding::identifier(text("6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E11")), id);
    EXPECT_EQ(ValueEncoding::identifier(text("6f1d2a90-0e25-4a1b-9c4e-7b8a5f2d3e11")), id);
    EXPECT_EQ(ValueEncoding::identifier(text("00000000-0000-0000-0000-000000000000")), QUuid());
    for (const char *wrong : {"6f1d2a900e254a1b9c4e7b8a5f2d3e11", "{6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E1}",
             "6F1D2A90-0E25-4A1B-9C4E-7B8A5F2D3E1G", "6F1D2A90x0E25-4A1B-9C4E-7B8A5F2D3E11", ""})
        EXPECT_EQ(ValueEncoding::identifier(text(wrong)), std::nullopt) << wrong;
    EXPECT_EQ(ValueEncoding::identifier(blob("fifteen bytes..")), std::nullopt);
    EXPECT_EQ(ValueEncoding::identifier(integer(7)), std::nullopt);
}

TEST(StoredText, KeepsEveryUnitThatUtf8CanHold)
{
    const QString nasty = u"\r\n\0 \u2028\uFFFC\uFDD0\U0001F600é"_s + QString(QChar(0xD83D)) + u"x"_s;
    QString back;
    const DatabaseValue stored = ValueEncoding::encoded(nasty);
    ValueEncoding::decode(viewOf(stored), "text", back);
    QString expected = nasty;
    expected[nasty.size() - 2] = QChar::ReplacementCharacter;
    EXPECT_EQ(back, expected); // same length: no position moves
    EXPECT_THROW(ValueEncoding::decode(integer(1), "text", back), DatabaseError);
}

TEST(UuidSource, MakesRandomIdentifiersInTheOrderOfTheStoredBytes)
{
    std::array<std::set<int>, 32> values; // of each byte, and of what sets it apart from the next
    for (int round = 0; round < 2; ++round) {
        QByteArray last;
        for (const QUuid &id : UuidSource().ascending(1'000)) {
            EXPECT_EQ(id.version(), QUuid::Random);
            EXPECT_EQ(id.variant(), QUuid::DCE);
            EXPECT_LT(std::exchange(last, id.toRfc4122()), id.toRfc4122());
            for (qsizetype byte = 0; byte < last.size(); ++byte) {
                values[size_t(byte)].insert(last[byte]);
                values[size_t(byte + 16)].insert(last[byte] ^ last[(byte + 1) % 16]);
            }
        }
    }
    for (const std::set<int> &each : values)
        EXPECT_GE(each.size(), 16);
}

TEST(RGBComponents, AreReadFromSixHexadecimalDigits)
{
    const auto color = RGBComponents::from(u" #0A33ff\n");
    ASSERT_TRUE(color);
    EXPECT_EQ(QList<double>({color->red, color->green, color->blue}), QList<double>({10 / 255.0, 51 / 255.0, 1.0}));
    for (const QChar digit : u"09afAF"_s)
        EXPECT_TRUE(RGBComponents::from(QString(6, digit)));
    for (const QString &wrong : {u"/"_s, u":"_s, u"`"_s, u"g"_s, u"@"_s, u"G"_s, u""_s, u"00"_s})
        EXPECT_FALSE(RGBComponents::from(u"#00000"_s + wrong)) << wrong.toStdString();
}
