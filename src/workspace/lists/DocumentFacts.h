#pragma once

#include <QString>

class QDate;
class QDateTime;
class QLocale;

/// What lists and heads say about a document.
namespace DocumentFacts {

/// "1,112 words", with the digit grouping of the user's locale.
[[nodiscard]] QString words(qint64 count);
/// "Nov 24": the day in the user's time zone and locale.
[[nodiscard]] QString day(const QDateTime &moment);

/// The abbreviated month and the day of the month in that locale's order.
[[nodiscard]] QString monthAndDay(const QDate &date, const QLocale &locale);

} // namespace DocumentFacts
