#include "kit/controls/LongText.h"

#include "support/Cases.h"

#include <QString>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using WrappingCase = Case<QString, bool>;
using EndlessWords = testing::TestWithParam<WrappingCase>;

} // namespace

TEST_P(EndlessWords, ArePartedAnywhere)
{
    const QString text = GetParam().given.repeated(20'000);
    EXPECT_EQ(LongText::wrapMode(text) == QTextOption::WrapAnywhere, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Texts, EndlessWords,
    testing::Values(WrappingCase{"letters", u"a"_s, true}, WrappingCase{"words", u"word "_s, false},
        WrappingCase{"words_between_spaces_that_do_not_break", u"word\u00A0"_s, true},
        WrappingCase{"ideographs", u"\u7814"_s, false},
        WrappingCase{"full_stops_that_begin_no_line", u"\u3002"_s, true}, WrappingCase{"small_kana", u"\u3083"_s, true},
        WrappingCase{"ideographs_with_spaces_that_do_not_break", u"\u7814\u00A0"_s, true},
        WrappingCase{"sentences_of_ideographs", u"\u7814\u7A76\u3002"_s, false},
        WrappingCase{"ideographs_of_another_plane", u"\U00020000"_s, false},
        WrappingCase{"letters_behind_the_ideographs", u"\uA4D0"_s, true},
        WrappingCase{"letters_of_another_plane", u"\U0001D41A"_s, true}),
    rowName);
