#include "workspace/lists/DocumentFacts.h"

#include "platform/LocaleText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct Run {
    qsizetype start;
    qsizetype end;
};

bool isPatternLetter(QChar unit)
{
    return unit.isLetter() && unit.unicode() < 0x80;
}

/// Blots the quoted parts of a date pattern out, so that their letters can't be taken for fields.
QString withoutQuotedText(QString pattern)
{
    bool isQuoted = false;
    for (QChar &unit : pattern) {
        const bool isQuote = unit == u'\'';
        if (isQuote)
            isQuoted = !isQuoted;
        if (isQuoted || isQuote)
            unit = u' ';
    }
    return pattern;
}

/// The first run of `letter` that is at most `longest` long; empty at the end if there is none.
Run fieldOf(const QString &pattern, QChar letter, qsizetype longest)
{
    for (qsizetype start = pattern.indexOf(letter); start >= 0;) {
        qsizetype end = start;
        while (end < pattern.size() && pattern.at(end) == letter)
            ++end;
        if (end - start <= longest)
            return {start, end};
        start = pattern.indexOf(letter, end);
    }
    return {pattern.size(), pattern.size()};
}

/// What is written close behind a field, such as the dot of an ordinal number or the sign for "day".
qsizetype endOfSuffix(const QString &pattern, qsizetype end)
{
    const auto belongs = [](QChar unit) { return !unit.isSpace() && unit != u',' && !isPatternLetter(unit); };
    while (end < pattern.size() && belongs(pattern.at(end)))
        ++end;
    return end;
}

/// Qt has no format without a year, but the locale's long date shows the order and what stands between.
QString monthAndDayPattern(const QString &longPattern)
{
    constexpr qsizetype weekdayLength = 3; // "ddd" and "dddd" are days of the week
    const QString fields = withoutQuotedText(longPattern);
    const Run month = fieldOf(fields, u'M', fields.size());
    const Run day = fieldOf(fields, u'd', weekdayLength - 1);
    const qsizetype start = std::min(month.start, day.start);
    const qsizetype end = endOfSuffix(fields, std::max(month.end, day.end));
    const bool hasBoth = month.end > month.start && day.end > day.start;
    if (!hasBoth || QStringView(fields).sliced(start, end - start).contains(u'y'))
        return u"MMM d"_s;
    return longPattern.sliced(start, end - start).replace("MMMM"_L1, "MMM"_L1);
}

} // namespace

QString DocumentFacts::words(qint64 count)
{
    return QCoreApplication::translate("DocumentFacts", "%1 words").arg(LocaleText::number(count));
}

QString DocumentFacts::day(const QDateTime &moment)
{
    return monthAndDay(moment.toLocalTime().date(), QLocale::system());
}

QString DocumentFacts::monthAndDay(const QDate &date, const QLocale &locale)
{
    return locale.toString(date, monthAndDayPattern(locale.dateFormat(QLocale::LongFormat)));
}
