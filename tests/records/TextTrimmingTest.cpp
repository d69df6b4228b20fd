#include "records/TextTrimming.h"
#include "support/Cases.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

struct TrimmingCase {
    const char *name;
    QString text;
    QString trimmed;
    QString trimmedBlanks;
};
using Trimming = testing::TestWithParam<TrimmingCase>;
TEST_P(Trimming, TakesOnlyWhatSurrounds)
{
    const TrimmingCase &row = GetParam();
    EXPECT_EQ(TextTrimming::trimmed(row.text).toString(), row.trimmed);
    EXPECT_EQ(TextTrimming::trimmedBlanks(row.text).toString(), row.trimmedBlanks);
}
INSTANTIATE_TEST_SUITE_P(TextTrimming, Trimming,
    testing::Values(TrimmingCase{"empty", u""_s, u""_s, u""_s}, //
        TrimmingCase{"nothing_but_blanks", u" \t \u00A0"_s, u""_s, u""_s},
        TrimmingCase{"inside_stays", u" a \n b "_s, u"a \n b"_s, u"a \n b"_s},
        TrimmingCase{"line_breaks_end_the_trimming_of_blanks", u" \n a \r\n "_s, u"a"_s, u"\n a \r\n"_s},
        TrimmingCase{"vertical_tab_and_form_feed_are_line_breaks", u"\v\fa\f\v"_s, u"a"_s, u"\v\fa\f\v"_s},
        TrimmingCase{"unicode_spaces", u"\u3000\u2003a\u202F\u1680"_s, u"a"_s, u"a"_s},
        TrimmingCase{"unicode_line_breaks", u"\u0085\u2028a\u2029"_s, u"a"_s, u"\u0085\u2028a\u2029"_s},
        TrimmingCase{"zero_width_space_is_no_blank", u"\u200Ba\uFEFF"_s, u"\u200Ba\uFEFF"_s, u"\u200Ba\uFEFF"_s},
        TrimmingCase{"control_characters_are_no_blanks", u"\u0000\u001F\u0008a"_s, u"\u0000\u001F\u0008a"_s,
            u"\u0000\u001F\u0008a"_s},
        TrimmingCase{"halves_of_pairs_stay", u" \xD800 "_s, u"\xD800"_s, u"\xD800"_s}),
    rowName);

TEST(TextTrimming, GivesAViewIntoTheText)
{
    const QString text = u"  word "_s;
    EXPECT_EQ(TextTrimming::trimmed(text).data(), text.constData() + 2);
}
