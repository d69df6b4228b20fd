#include "platform/TextDecoder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using TextDecoder::gb18030, TextDecoder::utf16, TextDecoder::utf8;

TEST(TextDecoder, TakesOnlyWhatIsValid)
{
    const struct {
        const char *fault;
        TextDecoder::Decoder decoder;
        const char *bytes; ///< in hexadecimal digits
        std::optional<QString> expected; ///< absent: refused
    } rows[]{
        {"mark of UTF-8 is text", utf8, "efbbbf 61", u"a"_s},
        {"second mark of UTF-8 is dropped", utf8, "efbbbf efbbbf", u"\uFEFF"_s},
        {"half a mark of UTF-8", utf8, "efbb", {}},
        {"overlong UTF-8", utf8, "61 c081", {}},
        {"surrogate in UTF-8", utf8, "eda080", {}},
        {"no mark of UTF-16", utf16, "6100 6200", {}},
        {"little endian", utf16, "fffe 6100 e14f", u"a信"_s},
        {"big endian", utf16, "feff 0061 4fe1", u"a信"_s},
        {"only a mark", utf16, "fffe", QString()},
        {"half a unit", utf16, "fffe 6100 62", {}},
        {"second mark of UTF-16 is dropped", utf16, "fffe fffe", u"\uFEFF"_s},
        {"surrogates in wrong order", utf16, "feff de00 d83d", u"\uFFFD\uFFFD"_s},
        {"surrogate before a pair", utf16, "feff d83d d83d de00", u"\uFFFD\U0001F600"_s},
        {"mark of GB18030 is text", gb18030, "84319533 61", u"a"_s},
        {"NUL in GB18030", gb18030, "61 00 62", QString::fromLatin1("a\0b", 3)},
        {"GB18030 cut off", gb18030, "9439fc", {}},
        {"invalid GB18030", gb18030, "61ff", {}},
    };
    for (const auto &[fault, decoder, bytes, expected] : rows)
        EXPECT_EQ(decoder(QByteArray::fromHex(bytes)), expected) << fault;
    EXPECT_EQ(TextDecoder::unmarkedUtf8("\uFEFFa"), u"\uFEFFa"_s);
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
