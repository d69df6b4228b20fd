#include "exchange/ExcerptExporter.h"

#include "platform/LocaleText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

ExcerptHit hit(const QString &snippet, const QString &title = u"Talk"_s)
{
    return {{}, {}, title, Snippet(snippet), 7, 1'234'567, {}};
}

ExportCodeGroup group(const QString &name, const QString &memo, const QList<ExcerptHit> &hits)
{
    ExportCodeGroup result;
    result.code.name = name;
    result.code.colorHex = u"<#AB>"_s;
    result.code.memo = memo.isNull() ? std::nullopt : std::optional(memo);
    result.hits = hits;
    return result;
}

/// The pieces of a report; the project's name and the passages hold everything that is markup in some format.
QStringList pieces(ExportFormat format, const QList<ExportCodeGroup> &groups)
{
    const QString project = u"A<B> & \"*C*'\""_s;
    const QDateTime date(QDate(2024, 3, 5), QTime(14, 7), Qt::UTC);
    QStringList result;
    const auto take = [&](QStringView piece) { result.append(piece.toString()); };
    if (format == ExportFormat::csv)
        ExcerptExporter::csv(groups, take);
    else if (format == ExportFormat::markdown)
        ExcerptExporter::markdown(project, groups, date, take);
    else
        ExcerptExporter::html(project, groups, date, take);
    for (QString &piece : result)
        piece.replace(LocaleText::longDateAndShortTime(date), u"TODAY"_s);
    return result;
}

} // namespace

TEST(ExcerptExporter, WritesEachFormat)
{
    const QList<ExportCodeGroup> groups{group(u"R&D, <core>"_s, u"\n a > b\n\nc \n"_s,
                                            {hit(u"\na\n\n<b>&lt;\n"_s, u"Q&A \"1\""_s), hit(u"\r\n'2'\"\r3"_s)}),
        group(u"Trust"_s, {}, {hit({})}), group(u"Doubt"_s, u" \t\r\n\u00A0\u2028"_s, {})};
    EXPECT_EQ(pieces(ExportFormat::csv, groups).join(QString()),
        u"\uFEFFCode,Excerpt,Document,Start,Length\n"
        "\"R&D, <core>\",\"\na\n\n<b>&lt;\n\",\"Q&A \"\"1\"\"\",7,1234567\n"
        "\"R&D, <core>\",\"\r\n'2'\"\"\r3\",Talk,7,1234567\nTrust,,Talk,7,1234567\n"_s);
    EXPECT_EQ(pieces(ExportFormat::markdown, groups).join(QString()),
        u"# A<B> & \"*C*'\" — Coded Excerpts\n\n_Exported from Vorn · TODAY_\n\n**3** codes · **3** excerpts\n"
        "\n---\n\n## R&D, <core> (2)\n\n_Memo: a > b  c_\n\n"
        "> \n> a\n> \n> <b>&lt;\n> \n>\n> — *Q&A \"1\"*\n\n> \r\n'2'\"\r3\n>\n> — *Talk*\n\n"
        "\n---\n\n## Trust (1)\n\n> \n>\n> — *Talk*\n\n\n---\n\n## Doubt (0)\n\n"_s);
    const QString page = pieces(ExportFormat::html, groups).join(QString());
    const QString title = u"A&lt;B&gt; &amp; &quot;*C*'&quot; — Coded Excerpts"_s;
    const QString heading = u"<section>\n<h2><span class=\"dot\" style=\"background:&lt;#AB&gt;\"></span>"_s;
    EXPECT_TRUE(page.startsWith(u"<!doctype html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>"_s
        + title + u"</title>\n<style>\n"_s));
    EXPECT_EQ(page.sliced(page.indexOf(u"</style>")),
        u"</style>\n</head>\n<body>\n<h1>"_s + title
            + u"</h1>\n<p class=\"meta\">Exported from Vorn · TODAY · 3 codes · 3 excerpts</p>\n"_s + heading
            + u"R&amp;D, &lt;core&gt; <span class=\"count\">2</span></h2>\n<p class=\"memo\">a &gt; b\n\nc</p>\n"
              "<blockquote><br>a<br><br>&lt;b&gt;&amp;lt;<br><footer>— Q&amp;A &quot;1&quot;</footer></blockquote>\n"
              "<blockquote>\r<br>'2'&quot;\r3<footer>— Talk</footer></blockquote>\n</section>\n"_s
            + heading
            + u"Trust <span class=\"count\">1</span></h2>\n<blockquote><footer>— Talk</footer></blockquote>\n"
              "</section>\n"_s
            + heading + u"Doubt <span class=\"count\">0</span></h2>\n</section>\n</body>\n</html>"_s);
}

TEST(ExcerptExporter, HandsALongReportOverInPiecesOfWholeLines)
{
    const QList<ExportCodeGroup> groups{group(u"C"_s, {}, QList<ExcerptHit>(100, hit(u"x"_s.repeated(9'000))))};
    for (const ExportFormat format : ExportFormats::formats()) {
        const QStringList parts = pieces(format, groups);
        EXPECT_GT(parts.size(), 9);
        for (const QString &part : parts)
            EXPECT_TRUE((part.endsWith(u'\n') || &part == &parts.last()) && part.size() < 80'000);
        EXPECT_EQ(parts.join(QString()).count(u"Talk"), 100);
    }
}

TEST(ExportFormats, AreOfferedByNameAndExtension)
{
    QStringList names;
    for (const ExportFormat format : ExportFormats::formats())
        names.append(ExportFormats::label(format) + u'.' + ExportFormats::fileExtension(format) + u' '
            + ExportFormats::rawValue(format));
    EXPECT_EQ(names, (QStringList{u"Markdown.md markdown"_s, u"CSV.csv csv"_s, u"HTML.html html"_s}));
}
