#include "platform/LocaleText.h"

#include <QDateTime>
#include <QLocale>

using namespace Qt::StringLiterals;

QString LocaleText::longDateAndShortTime(const QDateTime &moment)
{
    const QLocale locale = QLocale::system();
    const QDateTime local = moment.toLocalTime();
    return u"%1, %2"_s.arg(
        locale.toString(local.date(), QLocale::LongFormat), locale.toString(local.time(), QLocale::ShortFormat));
}

QString LocaleText::number(qint64 value)
{
    return QLocale::system().toString(value);
}
