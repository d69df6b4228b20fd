#pragma once

#include "records/database/DatabaseValue.h"

#include <QDateTime>
#include <QString>
#include <QUuid>

#include <concepts>
#include <optional>

/// How values look in the file. Identifiers are blobs of their 16 bytes, dates the text "yyyy-MM-dd HH:mm:ss.SSS" in
/// UTC, strings UTF-8, absent optionals NULL. Reading is more tolerant than writing.
namespace ValueEncoding {

[[nodiscard]] DatabaseValue encoded(const QUuid &value);
[[nodiscard]] DatabaseValue encoded(const QDateTime &value);
/// Unpaired surrogates become U+FFFD, unit for unit, so that positions stay valid.
[[nodiscard]] DatabaseValue encoded(const QString &value);
template <std::integral Integer>
[[nodiscard]] DatabaseValue encoded(Integer value)
{
    return qint64(value);
}
template <typename T>
[[nodiscard]] DatabaseValue encoded(const std::optional<T> &value)
{
    return value ? encoded(*value) : DatabaseValue{NullValue{}};
}

/// The identifier in a blob of 16 bytes or in its hyphenated text form of either case.
[[nodiscard]] std::optional<QUuid> identifier(const ValueView &view);
/// The moment in text of one of SQLite's date forms, or in a number of seconds since 1970 in UTC. Absent
/// outside the years 1 to 9999, which couldn't be written back.
[[nodiscard]] std::optional<QDateTime> date(const ValueView &view);
/// A date form: [YYYY-MM-DD][ or T][HH:MM[:SS[.fraction]]][Z or ±HH:MM]. A time alone is of the day 2000-01-01.
[[nodiscard]] std::optional<QDateTime> parsedDate(QByteArrayView text);

void decode(const ValueView &view, const char *column, QUuid &value);
void decode(const ValueView &view, const char *column, QDateTime &value);
void decode(const ValueView &view, const char *column, QString &value);
void decode(const ValueView &view, const char *column, qint64 &value);
/// Reads NULL as absent. All forms throw DatabaseError for a value that isn't of the wanted kind.
template <typename T>
void decode(const ValueView &view, const char *column, std::optional<T> &value)
{
    if (view.isNull())
        value.reset();
    else
        decode(view, column, value.emplace());
}

} // namespace ValueEncoding
