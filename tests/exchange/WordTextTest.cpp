#include "exchange/WordText.h"

#include "support/PlainWordText.h"

#include <QRandomGenerator>
#include <QStringList>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(WordText, IsOneLinePerParagraph)
{
    EXPECT_EQ(WordText::plainText(u"<w:t>tru</w:t></w:r><w:r><w:t>st &amp;lt;&#xE9;</w:t></w:p> <w:p></w:p><w:p></w:p>"
                                  "a<w:br/>b \t<w:tab/>c</w:p><x <w:br/> y>"_s),
        u"trust <é\n\na b c"_s);
    // Unlike the plain steps, which take only valid UTF-16, it takes anything.
    EXPECT_EQ(WordText::plainText(u"a<"_s + QChar(0xD83D) + u">b &#x41;"_s + QChar(0xDE00)), u"ab A"_s + QChar(0xDE00));
}

TEST(WordText, AgreesWithTheStepsTakenOneByOne)
{
    const QStringList pieces{u"<"_s, u">"_s, u"&"_s, u"amp;"_s, u"lt;"_s, u"gt;"_s, u"&lt;"_s, u"&gt;"_s, u"&amp;"_s,
        u"&quot;"_s, u"&apos;"_s, u"&#"_s, u"x"_s, u"41"_s, u"D800"_s, u"110000"_s, u"FFFFFFFFF"_s, u"4294967361"_s,
        u"10FFFF"_s, u"57343"_s, u"E000"_s, u"0000000000000000000000065"_s, u";"_s, u"<w:br/>"_s, u"<w:br />"_s,
        u"<w:tab/>"_s, u"</w:p>"_s, u"<w:br"_s, u"/>"_s, u" />"_s, u"</w:"_s, u"p>"_s, u"<w:p>"_s,
        u"<w:t xml:space=\"preserve\">"_s, u"<>"_s, u"\n"_s, u"\r"_s, u"\r\n"_s, u" "_s, u"\t"_s, u"a"_s, u"\u00A0"_s,
        u"\u2028"_s, u"\u3000"_s, u"\u0085"_s, u"\v"_s, u"\f"_s, u"é"_s, u"e\u0301"_s, u"一"_s, u"\u200D"_s,
        u"\u200B"_s, u"\U0001F600"_s, u"&#13;"_s, u"&#10;"_s, u"&#x20;"_s, u"&#9;"_s, u"&#x2029;"_s, u"#"_s, u"1"_s,
        QString(1, QChar(0))};
    QRandomGenerator random(11);
    for (int round = 0; round < 10'000; ++round) {
        // Few kinds of pieces at a time, so that those that make something together meet.
        const qsizetype first = random.bounded(pieces.size());
        const qsizetype kinds = 1 + random.bounded(round % 2 == 0 ? 8 : pieces.size());
        QString xml;
        for (int count = random.bounded(20); count > 0; --count)
            xml += pieces[(first + random.bounded(kinds)) % pieces.size()];
        ASSERT_EQ(WordText::plainText(xml), PlainWordText::plainText(xml)) << xml.toStdString();
        ASSERT_EQ(WordText::decodeNumericEntities(xml), PlainWordText::decodeNumericEntities(xml)) << xml.toStdString();
    }
}

/// Text that makes a careless reader look at the same units again and again.
TEST(WordText, TakesItsTimeFromTheLengthAlone)
{
    constexpr int times = 1'000'000;
    EXPECT_EQ(WordText::plainText(QString(times, u'<')).size(), times);
    EXPECT_EQ(WordText::plainText(u"<a "_s + u"<w:br/>"_s.repeated(times) + u'b'), u"<a b"_s);
    EXPECT_EQ(WordText::plainText(u"<>"_s.repeated(times)).size(), 2 * times);
    EXPECT_EQ(WordText::plainText(u"&#"_s.repeated(times)).size(), 2 * times);
    EXPECT_EQ(WordText::plainText(u"&#x"_s + QString(times, u'1')).size(), times + 3);
    EXPECT_EQ(WordText::plainText(u"a"_s + u"\r\n "_s.repeated(times) + u'b').size(), 3 * times + 2);
    EXPECT_EQ(WordText::plainText(u"a"_s + u" \n\t"_s.repeated(times) + u'b'), u"a\n\nb"_s);
}

} // namespace
