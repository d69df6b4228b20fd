#include "exchange/ExcerptExporter.h"

#include "exchange/RefiQdpx.h"
#include "exchange/TextLines.h"
#include "platform/LocaleText.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace {

qsizetype excerptCount(const QList<ExportCodeGroup> &groups)
{
    qsizetype count = 0;
    for (const ExportCodeGroup &group : groups)
        count += group.hits.size();
    return count;
}

/// A report that is handed over in pieces while it is written.
class Report {
public:
    explicit Report(const ExcerptExporter::TakePiece &take) : m_take(take) { }
    Report(const Report &) = delete;
    Report &operator=(const Report &) = delete;

    [[nodiscard]] QString &text() { return m_text; }
    /// To be called where the text ends with a line.
    void handOverIfLarge()
    {
        constexpr qsizetype pieceSize = qsizetype(1) << 16; // units
        if (m_text.size() >= pieceSize)
            finish();
    }
    void finish()
    {
        if (!m_text.isEmpty())
            m_take(m_text);
        m_text.resize(0); // keeps the memory
    }

private:
    const ExcerptExporter::TakePiece &m_take;
    QString m_text;
};

QString csvField(QString field)
{
    if (!field.contains(u',') && !field.contains(u'"') && !field.contains(u'\n'))
        return field;
    return u'"' + field.replace(u'"', u"\"\""_s) + u'"';
}

void appendRow(QString &report, const Code &code, const ExcerptHit &hit)
{
    for (const QString &field : {code.name, hit.snippet.toString(), hit.documentTitle})
        report += csvField(field) + u',';
    report += QString::number(hit.start) + u',' + QString::number(hit.length) + u'\n';
}

void appendMarkdownHit(QString &report, const ExcerptHit &hit)
{
    const QString snippet = hit.snippet.toString();
    forEachLine(snippet, [&](QStringView line) {
        report += u"> "_s;
        report += line;
        report += u'\n';
    });
    report += u">\n> — *"_s + hit.documentTitle + u"*\n\n"_s;
}

void appendMarkdownHeading(QString &report, const ExportCodeGroup &group)
{
    report += u"\n---\n\n## "_s + group.code.name + u" ("_s + QString::number(group.hits.size()) + u")\n\n"_s;
    if (std::optional<QString> memo = RefiQdpx::trimmedMemo(group.code.memo))
        report += u"_Memo: "_s + memo->replace(u'\n', u' ') + u"_\n\n"_s;
}

void appendHead(QString &report, const QString &projectName)
{
    report += uR"(<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>)"_s;
    report += projectName.toHtmlEscaped();
    report += uR"( — Coded Excerpts</title>
<style>
:root { color-scheme: light dark; }
body { font: 15px/1.65 -apple-system, "SF Pro Text", system-ui, sans-serif; max-width: 720px; margin: 48px auto; padding: 0 24px; }
h1 { font-size: 26px; margin-bottom: 4px; }
h2 { font-size: 18px; margin: 44px 0 12px; display: flex; align-items: center; gap: 8px; }
.dot { width: 10px; height: 10px; border-radius: 5px; display: inline-block; flex: none; }
.count { font-size: 12px; color: #8a8a8e; font-weight: 400; }
.memo { font-style: italic; color: #8a8a8e; }
blockquote { margin: 14px 0; padding: 10px 16px; border-left: 3px solid rgba(127,127,127,0.35); background: rgba(127,127,127,0.07); border-radius: 4px; }
blockquote footer { margin-top: 8px; font-size: 12px; color: #8a8a8e; }
.meta { color: #8a8a8e; }
</style>
</head>
)"_s;
}

void appendHtmlHit(QString &report, const ExcerptHit &hit)
{
    report += u"<blockquote>"_s + hit.snippet.toString().toHtmlEscaped().replace(u'\n', u"<br>"_s) + u"<footer>— "_s
        + hit.documentTitle.toHtmlEscaped() + u"</footer></blockquote>\n"_s;
}

void appendHtmlHeading(QString &report, const ExportCodeGroup &group)
{
    report += u"<section>\n<h2><span class=\"dot\" style=\"background:"_s + group.code.colorHex.toHtmlEscaped()
        + u"\"></span>"_s + group.code.name.toHtmlEscaped() + u" <span class=\"count\">"_s
        + QString::number(group.hits.size()) + u"</span></h2>\n"_s;
    if (const std::optional<QString> memo = RefiQdpx::trimmedMemo(group.code.memo))
        report += u"<p class=\"memo\">"_s + memo->toHtmlEscaped() + u"</p>\n"_s;
}

} // namespace

QString ExportFormats::label(ExportFormat format)
{
    switch (format) {
    case ExportFormat::markdown:
        return u"Markdown"_s;
    case ExportFormat::csv:
        return u"CSV"_s;
    case ExportFormat::html:
        return u"HTML"_s;
    }
    Q_UNREACHABLE();
}

QString ExportFormats::fileExtension(ExportFormat format)
{
    return format == ExportFormat::markdown ? u"md"_s : rawValue(format);
}

QString ExportFormats::rawValue(ExportFormat format)
{
    return label(format).toLower();
}

void ExcerptExporter::csv(const QList<ExportCodeGroup> &groups, const TakePiece &take)
{
    Report report(take);
    report.text() += u"\uFEFFCode,Excerpt,Document,Start,Length\n"_s;
    for (const ExportCodeGroup &group : groups) {
        for (const ExcerptHit &hit : group.hits) {
            appendRow(report.text(), group.code, hit);
            report.handOverIfLarge();
        }
    }
    report.finish();
}

void ExcerptExporter::markdown(
    const QString &projectName, const QList<ExportCodeGroup> &groups, const QDateTime &date, const TakePiece &take)
{
    Report report(take);
    QString &text = report.text();
    text += u"# "_s + projectName + u" — Coded Excerpts\n\n"_s;
    text += u"_Exported from Vorn · "_s + LocaleText::longDateAndShortTime(date) + u"_\n\n"_s;
    text += u"**"_s + QString::number(groups.size()) + u"** codes · **"_s + QString::number(excerptCount(groups))
        + u"** excerpts\n"_s;
    for (const ExportCodeGroup &group : groups) {
        appendMarkdownHeading(text, group);
        for (const ExcerptHit &hit : group.hits) {
            appendMarkdownHit(text, hit);
            report.handOverIfLarge();
        }
    }
    report.finish();
}

void ExcerptExporter::html(
    const QString &projectName, const QList<ExportCodeGroup> &groups, const QDateTime &date, const TakePiece &take)
{
    Report report(take);
    QString &text = report.text();
    appendHead(text, projectName);
    text += u"<body>\n<h1>"_s + projectName.toHtmlEscaped()
        + u" — Coded Excerpts</h1>\n<p class=\"meta\">Exported from Vorn · "_s + LocaleText::longDateAndShortTime(date)
        + u" · "_s + QString::number(groups.size()) + u" codes · "_s + QString::number(excerptCount(groups))
        + u" excerpts</p>\n"_s;
    for (const ExportCodeGroup &group : groups) {
        appendHtmlHeading(text, group);
        for (const ExcerptHit &hit : group.hits) {
            appendHtmlHit(text, hit);
            report.handOverIfLarge();
        }
        text += u"</section>\n"_s;
    }
    text += u"</body>\n</html>"_s;
    report.finish();
}
