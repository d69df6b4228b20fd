#include "records/Snippet.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Snippet, IsCopiedOutAsItStandsOrInOneLine)
{
    const QString text = u"x\n a\r\n\nb \ny"_s;
    EXPECT_EQ(Snippet().toString(), QString());
    EXPECT_EQ(Snippet(text).toString(), text);
    EXPECT_EQ(Snippet(text, {1, 9}).toString(), u"\n a\r\n\nb \n"_s);
    EXPECT_EQ(Snippet::withoutLineFeeds(text, {1, 9}).toString(), u"a\r  b"_s);
    EXPECT_EQ(Snippet::withoutLineFeeds(text, {1, 9}).beginning(3), u"a\r "_s);
    EXPECT_EQ(Snippet::withoutLineFeeds(text, {1, 2}).toString(), QString());
    EXPECT_EQ(Snippet(text, {1, 2}).beginning(100), u"\n "_s);
}

TEST(Snippet, EqualsWhatReadsTheSame)
{
    const QString text = u"one two one"_s;
    EXPECT_EQ(Snippet(text, {0, 3}), Snippet(text, {0, 3}));
    EXPECT_EQ(Snippet(text, {0, 3}), Snippet(text, {8, 3}));
    EXPECT_EQ(Snippet(text, {4, 3}), Snippet(u"two"_s));
    EXPECT_FALSE(Snippet(text, {0, 3}) == Snippet(text, {0, 4}));
    EXPECT_FALSE(Snippet(text, {0, 3}) == Snippet(text, {4, 3}));
    EXPECT_FALSE(Snippet(text, {0, 3}) == Snippet::withoutLineFeeds(text, {0, 3}));
}
