#include "exchange/ExcerptExporter.h"

#include "platform/LocaleText.h"
#include "support/Cases.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QDateTime exportTime(QDate(2024, 3, 5), QTime(14, 7), Qt::UTC);

QString dateText()
{
    return LocaleText::longDateAndShortTime(exportTime);
}

ExcerptHit hit(const QString &snippet, const QString &title = u"Talk"_s)
{
    ExcerptHit result;
    result.snippet = Snippet(snippet);
    result.documentTitle = title;
    result.start = 7;
    result.length = 1'234'567;
    return result;
}

ExportCodeGroup group(const QString &name, const QList<ExcerptHit> &hits, const std::optional<QString> &memo = {})
{
    ExportCodeGroup result;
    result.code.name = name;
    result.code.colorHex = u"#AABBCC"_s;
    result.code.memo = memo;
    result.hits = hits;
    return result;
}

/// What `write` hands over, in one piece.
template <typename Write>
QString whole(Write write)
{
    QString report;
    write([&](QStringView piece) { report += piece; });
    return report;
}

QString csv(const QList<ExportCodeGroup> &groups)
{
    return whole([&](const auto &take) { ExcerptExporter::csv(groups, take); });
}

QString markdown(const QString &projectName, const QList<ExportCodeGroup> &groups, const QDateTime &date)
{
    return whole([&](const auto &take) { ExcerptExporter::markdown(projectName, groups, date, take); });
}

QString html(const QString &projectName, const QList<ExportCodeGroup> &groups, const QDateTime &date)
{
    return whole([&](const auto &take) { ExcerptExporter::html(projectName, groups, date, take); });
}

/// The part of a Markdown report after its counts.
QString markdownOf(const ExportCodeGroup &only)
{
    const QString report = markdown(u"P"_s, {only}, exportTime);
    return report.sliced(report.indexOf(u"\n---"));
}

QString bodyOf(const QString &html)
{
    return html.sliced(html.indexOf(u"<body>"));
}

/// What stands in the one section of an HTML report.
QString sectionOf(const ExportCodeGroup &only)
{
    const QString body = bodyOf(html(u"P"_s, {only}, exportTime));
    const qsizetype start = body.indexOf(u"<section>\n") + 10;
    return body.sliced(start, body.indexOf(u"</section>") - start);
}

TEST(ExcerptExporter, ReportsOfNoCodes)
{
    EXPECT_EQ(csv({}).toUtf8(),
        QByteArray("\xEF\xBB\xBF"
                   "Code,Excerpt,Document,Start,Length\n"));
    EXPECT_EQ(markdown(u"My *study*"_s, {}, exportTime),
        u"# My *study* — Coded Excerpts\n\n_Exported from Vorn · "_s + dateText()
            + u"_\n\n**0** codes · **0** excerpts\n"_s);
    const QString page = html(u"A<B> & \"C'\""_s, {}, exportTime);
    const QString title = u"A&lt;B&gt; &amp; &quot;C'&quot; — Coded Excerpts"_s;
    EXPECT_TRUE(page.startsWith(u"<!doctype html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>"_s
        + title + u"</title>\n<style>\n"_s));
    EXPECT_EQ(bodyOf(page),
        u"<body>\n<h1>"_s + title + u"</h1>\n<p class=\"meta\">Exported from Vorn · "_s + dateText()
            + u" · 0 codes · 0 excerpts</p>\n</body>\n</html>"_s);
}

TEST(ExcerptExporter, CountsGroupsWithoutPassagesAndKeepsTheOrder)
{
    const QList<ExportCodeGroup> groups{
        group(u"Trust"_s, {hit(u"b"_s), hit(u"a"_s)}), group(u"Doubt"_s, {}), group(u"Trust"_s, {hit(u"c"_s)})};
    EXPECT_EQ(
        csv(groups).section(u'\n', 1), u"Trust,b,Talk,7,1234567\nTrust,a,Talk,7,1234567\nTrust,c,Talk,7,1234567\n"_s);
    EXPECT_TRUE(markdown(u"P"_s, groups, exportTime)
                    .contains(u"\n**3** codes · **3** excerpts\n\n---\n\n## Trust (2)\n\n> b\n>\n> — *Talk*\n\n> "
                              u"a\n>\n> — *Talk*\n\n\n---\n\n"
                              "## Doubt (0)\n\n\n---\n\n## Trust (1)\n\n> c\n"));
    const QString page = html(u"P"_s, groups, exportTime);
    EXPECT_TRUE(page.contains(u" · 3 codes · 3 excerpts</p>\n<section>\n"));
    EXPECT_TRUE(
        page.contains(u"</section>\n<section>\n<h2><span class=\"dot\" style=\"background:#AABBCC\"></span>Doubt "
                      "<span class=\"count\">0</span></h2>\n</section>\n<section>\n"));
    EXPECT_TRUE(page.endsWith(u"</section>\n</body>\n</html>"));
}

TEST(ExcerptExporter, QuotesCsvFieldsOnlyWhereNeededInEveryColumn)
{
    const QList<std::pair<QString, QString>> cases{{{}, {}}, {u" a "_s, u" a "_s}, {u"a,b"_s, u"\"a,b\""_s},
        {u"say \"hi\""_s, u"\"say \"\"hi\"\"\""_s}, {u"a\nb"_s, u"\"a\nb\""_s}, {u"=1\r"_s, u"=1\r"_s}};
    for (const auto &[field, expected] : cases)
        EXPECT_EQ(csv({group(field, {hit(field, field)})}).section(u'\n', 1),
            QStringList(3, expected).join(u',') + u",7,1234567\n"_s);
}

TEST(ExcerptExporter, HandsALongReportOverInPiecesOfWholeLines)
{
    const QList<ExportCodeGroup> groups{group(u"C"_s, QList<ExcerptHit>(100, hit(u"x"_s.repeated(9'000))))};
    QStringList pieces;
    ExcerptExporter::csv(groups, [&](QStringView piece) { pieces.append(piece.toString()); });
    EXPECT_GT(pieces.size(), 9);
    for (const QString &piece : pieces) {
        EXPECT_TRUE(piece.endsWith(u'\n'));
        EXPECT_LT(piece.size(), 80'000);
    }
    EXPECT_EQ(pieces.join(QString()), csv(groups));
    EXPECT_EQ(pieces.join(QString()).count(u'\n'), 101);
}

TEST(ExportFormats, AreOfferedByNameAndExtension)
{
    QStringList names;
    for (const ExportFormat format : ExportFormats::formats())
        names.append(ExportFormats::label(format) + u'.' + ExportFormats::fileExtension(format) + u' '
            + ExportFormats::rawValue(format));
    EXPECT_EQ(names, (QStringList{u"Markdown.md markdown"_s, u"CSV.csv csv"_s, u"HTML.html html"_s}));
}

struct SnippetCase {
    const char *name;
    QString snippet;
    QString markdown;
    QString html;
};

using Snippet = testing::TestWithParam<SnippetCase>;

TEST_P(Snippet, KeepsItsLinesInAQuotation)
{
    const ExportCodeGroup only = group(u"R&D <core>"_s, {hit(GetParam().snippet, u"Q&A \"1\""_s)});
    EXPECT_EQ(
        markdownOf(only), u"\n---\n\n## R&D <core> (1)\n\n"_s + GetParam().markdown + u"\n>\n> — *Q&A \"1\"*\n\n"_s);
    EXPECT_EQ(sectionOf(only),
        u"<h2><span class=\"dot\" style=\"background:#AABBCC\"></span>R&amp;D &lt;core&gt; <span "
        u"class=\"count\">1</span></h2>\n"
        "<blockquote>"_s
            + GetParam().html + u"<footer>— Q&amp;A &quot;1&quot;</footer></blockquote>\n"_s);
}

INSTANTIATE_TEST_SUITE_P(Values, Snippet,
    testing::Values(SnippetCase{"empty_line_between", u"a\n\nb"_s, u"> a\n> \n> b"_s, u"a<br><br>b"_s},
        SnippetCase{"nothing", {}, u"> "_s, {}},
        SnippetCase{"line_feed_at_both_ends", u"\na\n"_s, u"> \n> a\n> "_s, u"<br>a<br>"_s},
        SnippetCase{"carriage_return_with_line_feed_is_one_character", u"a\r\nb"_s, u"> a\r\nb"_s, u"a\r<br>b"_s},
        SnippetCase{"ampersand_first", u"&lt; <b> \"q\" 'a'"_s, u"> &lt; <b> \"q\" 'a'"_s,
            u"&amp;lt; &lt;b&gt; &quot;q&quot; 'a'"_s}),
    rowName);

struct MemoCase {
    const char *name;
    std::optional<QString> memo;
    QString markdown;
    QString html;
};

using Memo = testing::TestWithParam<MemoCase>;

TEST_P(Memo, StandsUnderTheHeadingIfItSaysAnything)
{
    const ExportCodeGroup only = group(u"C"_s, {}, GetParam().memo);
    EXPECT_EQ(markdownOf(only), u"\n---\n\n## C (0)\n\n"_s + GetParam().markdown);
    EXPECT_EQ(sectionOf(only).section(u'\n', 1), GetParam().html);
}

INSTANTIATE_TEST_SUITE_P(Values, Memo,
    testing::Values(MemoCase{"empty", QString(), {}, {}},
        MemoCase{"only_blanks_and_line_ends", u" \t\r\n\u00A0\u2028"_s, {}, {}},
        MemoCase{"trimmed", u"\n a & b \n"_s, u"_Memo: a & b_\n\n"_s, u"<p class=\"memo\">a &amp; b</p>\n"_s},
        MemoCase{"line_feeds_inside", u"a\n\nb\n"_s, u"_Memo: a  b_\n\n"_s, u"<p class=\"memo\">a\n\nb</p>\n"_s}),
    rowName);

TEST(ExcerptExporter, LetsNoTextBecomeMarkupOfThePage)
{
    const auto page = [](const QString &text) {
        ExportCodeGroup only = group(text, {hit(text, text)}, text);
        only.code.colorHex = text;
        return html(text, {only}, exportTime);
    };
    const QString harmless = page(u"a"_s);
    const QString hostile = page(u"\"></title></style><script>alert('1')</script><img src=\"http://x\"><!--&lt;"_s);
    for (const char16_t sign : {u'<', u'>', u'"'})
        EXPECT_EQ(hostile.count(QChar(sign)), harmless.count(QChar(sign)));
    EXPECT_FALSE(harmless.contains(u"//")); // nothing is fetched from anywhere
}

} // namespace
