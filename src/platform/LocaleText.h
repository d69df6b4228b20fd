#pragma once

#include <QString>

class QDateTime;

/// Dates and numbers in the user's locale and time zone.
namespace LocaleText {
/// A long date and a short time.
[[nodiscard]] QString longDateAndShortTime(const QDateTime &moment);
/// The abbreviated month and the day of the month, in the locale's order.
[[nodiscard]] QString monthAndDay(const QDateTime &moment);
/// With the locale's digit grouping.
[[nodiscard]] QString number(qint64 value);
} // namespace LocaleText
