#include "records/TextTrimming.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(TextTrimming, TakesOnlyWhatSurrounds)
{
    using TextTrimming::trimmed, TextTrimming::trimmedBlanks;
    EXPECT_EQ(trimmed(u" \r\n\u3000a \n b\u2029\t"_s).toString(), u"a \n b"_s);
    EXPECT_EQ(trimmedBlanks(u"\t\u00A0\n a \r\n "_s).toString(), u"\n a \r\n"_s);
    EXPECT_EQ(trimmed(u" \u200B\xD800\uFEFF\n"_s).toString(), u"\u200B\xD800\uFEFF"_s);
    EXPECT_EQ(trimmed(u" \t \u00A0"_s).toString(), QString());
    const QString text = u"  word "_s;
    EXPECT_EQ(trimmed(text).data(), text.constData() + 2); // a view into the text
}
