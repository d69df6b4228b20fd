#include "support/PlainWordText.h"

#include <QRegularExpression>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

QString withoutMarkup(QString text)
{
    static const QRegularExpression tag(u"<[^>]+>"_s);
    text.replace(u"<w:br/>"_s, u" "_s);
    text.replace(u"<w:br />"_s, u" "_s);
    text.replace(u"<w:tab/>"_s, u"\t"_s);
    text.replace(u"</w:p>"_s, u"\n"_s);
    return text.replace(tag, QString());
}

QString withNamedEntities(QString text)
{
    text.replace(u"&amp;"_s, u"&"_s);
    text.replace(u"&lt;"_s, u"<"_s);
    text.replace(u"&gt;"_s, u">"_s);
    text.replace(u"&quot;"_s, u"\""_s);
    return text.replace(u"&apos;"_s, u"'"_s);
}

QString trimmed(QString text, const QString &characters)
{
    const QRegularExpression atEnds(u"\\A[%1]+|[%1]+\\z"_s.arg(characters));
    return text.remove(atEnds);
}

const QString blanks = u"\\p{Zs}\\t"_s;
const QString blanksAndLineBreaks = u"\\p{Zs}\\t\\x{A}-\\x{D}\\x{85}\\x{2028}\\x{2029}"_s;

QString tidied(QString line)
{
    static const QRegularExpression run(u"[ \\t]+"_s);
    return trimmed(line.replace(run, u" "_s), blanks);
}

} // namespace

QString PlainWordText::decodeNumericEntities(const QString &text)
{
    static const QRegularExpression reference(u"&#(x?)([0-9A-Fa-f]+);"_s);
    QString result;
    qsizetype copied = 0;
    for (auto matches = reference.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        result += text.sliced(copied, match.capturedStart() - copied);
        copied = match.capturedEnd();
        bool isNumber = false;
        const uint value = match.captured(2).toUInt(&isNumber, match.captured(1) == u"x" ? 16 : 10);
        if (isNumber && value < 0x110000 && !QChar::isSurrogate(value))
            result += QStringView(QChar::fromUcs4(value));
    }
    return result + text.sliced(copied);
}

QString PlainWordText::plainText(const QString &wordXML)
{
    static const QRegularExpression lineFeed(u"(?<!\\r)\\n"_s);
    const QString text = decodeNumericEntities(withNamedEntities(withoutMarkup(wordXML)));
    QStringList kept;
    int emptyLines = 0;
    for (const QString &piece : text.split(lineFeed)) {
        const QString line = tidied(piece);
        emptyLines = line.isEmpty() ? emptyLines + 1 : 0;
        if (emptyLines < 2)
            kept.append(line);
    }
    return trimmed(kept.join(u'\n'), blanksAndLineBreaks);
}
