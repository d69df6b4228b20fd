#include "kit/lists/RowText.h"

#include "platform/LocaleText.h"
#include "records/TextTrimming.h"

#include <QFontMetrics>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// More than the widest row can show.
constexpr qsizetype maxUnits = 600;

} // namespace

QString RowText::withoutBreaks(QString text)
{
    std::ranges::replace_if(
        text, [](QChar unit) { return unit == u'\t' || TextTrimming::isLineBreak(unit.unicode()); }, u' ');
    return text;
}

QString RowText::oneLine(const QString &text)
{
    return withoutBreaks(text.left(maxUnits));
}

QString RowText::fitting(const QString &text, const QFont &font, int width)
{
    return QFontMetrics(font).elidedText(oneLine(text), Qt::ElideRight, width);
}

QString RowText::forMenu(const QString &name, const QFont &font)
{
    constexpr int maxWidth = 320;
    return fitting(name, font, maxWidth).replace(u'&', u"&&"_s).replace(u'\t', u' ');
}

QString RowText::counted(qint64 count, const QString &noun)
{
    return LocaleText::number(count) + u' ' + noun + (count == 1 ? u""_s : u"s"_s);
}
