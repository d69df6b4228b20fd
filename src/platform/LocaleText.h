#pragma once

#include <QString>

class QDateTime;

/// Dates and numbers in the user's locale and time zone. Locales are BCP 47 tags. To be called on the main thread.
namespace LocaleText {

/// The locale that dates are written in: the environment's, as the desktop set it, else the system's. English of the
/// United States where none is chosen, as in the "C" locale.
[[nodiscard]] QString dateLocale();

/// A long date, without the weekday, and a short time.
[[nodiscard]] QString longDateAndShortTime(const QDateTime &moment, const QString &locale = dateLocale());
/// The abbreviated month and the day of the month, in the locale's order: "5. März", "3月5日".
[[nodiscard]] QString monthAndDay(const QDateTime &moment, const QString &locale = dateLocale());
/// With the locale's digit grouping.
[[nodiscard]] QString number(qint64 value);

} // namespace LocaleText
