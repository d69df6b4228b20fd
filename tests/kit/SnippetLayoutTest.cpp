#include "kit/lists/SnippetLayout.h"

#include "kit/theme/Fonts.h"
#include "kit/theme/ThemedTest.h"
#include "support/NastyText.h"

#include <QImage>
#include <QPainter>

#include <span>

using namespace Qt::StringLiterals;

namespace {

SnippetLayout::Style style(int width = 249)
{
    return {.font = Fonts::body(), .width = width};
}

struct SnippetCase {
    const char *name;
    QString passage;
    int lineCount;
    bool isCut;
};
class Snippet : public ThemedTest, public testing::WithParamInterface<SnippetCase> { };

} // namespace

TEST_P(Snippet, TakesItsLinesAndNoMore)
{
    const SnippetLayout snippet(GetParam().passage, style());
    EXPECT_EQ(snippet.lineCount(), GetParam().lineCount);
    EXPECT_EQ(snippet.isCut(), GetParam().isCut);
    EXPECT_EQ(snippet.text().endsWith(u'…'), GetParam().isCut);
    EXPECT_EQ(snippet.height(), GetParam().lineCount * SnippetLayout::lineHeightOf(style()));
}

INSTANTIATE_TEST_SUITE_P(Passages, Snippet,
    testing::Values(SnippetCase{"ends_in_the_third_line", u"ten letter "_s.repeated(8) + u"end"_s, 3, false},
        SnippetCase{"goes_on", u"ten letter "_s.repeated(20), 3, true},
        SnippetCase{"one_endless_word", u"x"_s.repeated(1000), 3, true},
        SnippetCase{"a_book", u"many words "_s.repeated(1'000'000), 3, true},
        SnippetCase{"chinese_without_blanks", u"最烦的是那种重要通知点开一看全是废话"_s.repeated(9), 3, true},
        SnippetCase{"line_breaks_are_blanks", u"a\nb\r\nc\u2028d\u2029e\vf"_s, 1, false},
        SnippetCase{"a_cut_pair_at_the_limit", u"😀"_s.repeated(2000), 3, true},
        SnippetCase{"marks_without_width", u"a"_s + u"\u0301"_s.repeated(5000), 1, true}),
    rowName);

TEST_F(ThemedTest, SnippetsShowTheBeginningOfAnyTextWithinTheirWidth)
{
    NastyText nasty(20260301);
    for (int round = 0; round < 300; ++round) {
        const QString passage = nasty.next(round);
        const SnippetLayout snippet(passage, style(nasty.number(1, 400)));
        EXPECT_LE(snippet.lineCount(), 3);
        QString shown = snippet.text();
        if (snippet.isCut())
            shown.chop(1);
        ASSERT_LE(shown.size(), passage.size());
        QImage picture(8, 8, QImage::Format_ARGB32);
        QPainter painter(&picture);
        snippet.draw(painter, {}); // whatever the text is made of
    }
}

TEST_F(ThemedTest, SnippetsEmphasiseWhatTheySay)
{
    QTextCharFormat blue;
    blue.setBackground(Qt::blue);
    const auto bluePixels = [&blue](const TextRange &emphasis) {
        QImage picture(260, 60, QImage::Format_RGB32);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        SnippetLayout(u"ten letter "_s.repeated(30), style(), emphasis, blue).draw(painter, {});
        const std::span pixels(reinterpret_cast<const QRgb *>(picture.constBits()), size_t(260 * 60));
        return std::ranges::count(pixels, QColor(Qt::blue).rgb());
    };
    EXPECT_GT(bluePixels({5, 5}), bluePixels({5, 2}));
    EXPECT_GT(bluePixels({5, 2}), 0);
    EXPECT_EQ(bluePixels({300, 10}), 0) << "it lies beyond what is shown";
}
