#include "platform/LocaleText.h"

#include <QDateTime>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

/// A desktop without a language speaks that of the interface.
QLocale userLocale()
{
    const QLocale locale = QLocale::system();
    return locale.language() == QLocale::C ? QLocale(QLocale::English, QLocale::UnitedStates) : locale;
}

} // namespace

QString LocaleText::longDateAndShortTime(const QDateTime &moment)
{
    const QLocale locale = userLocale();
    const QDateTime local = moment.toLocalTime();
    return u"%1, %2"_s.arg(
        locale.toString(local.date(), QLocale::LongFormat), locale.toString(local.time(), QLocale::ShortFormat));
}

QString LocaleText::monthAndDay(const QDateTime &moment)
{
    const QLocale locale = userLocale();
    const QDate date = moment.toLocalTime().date();
    const QString order = locale.dateFormat(QLocale::ShortFormat);
    const bool dayFirst = order.indexOf(u'd') < order.indexOf(u'M');
    return locale.toString(date, dayFirst ? u"d MMM"_s : u"MMM d"_s);
}

QString LocaleText::number(qint64 value)
{
    return userLocale().toString(value);
}
