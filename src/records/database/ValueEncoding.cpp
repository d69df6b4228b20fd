#include "records/database/ValueEncoding.h"

#include "platform/TextDecoder.h"
#include "platform/UnpairedSurrogates.h"
#include "records/database/DatabaseError.h"

#include <QTimeZone>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// The range of the text form, in milliseconds since 1970: what is read must be writable. QDate has no year 0.
constexpr qint64 firstMoment = -62'135'596'800'000; // 0001-01-01 00:00:00.000 UTC
constexpr qint64 lastMoment = 253'402'300'799'999; // 9999-12-31 23:59:59.999 UTC

std::optional<QDateTime> fromMoment(double milliseconds)
{
    if (!(milliseconds >= double(firstMoment) && milliseconds <= double(lastMoment)))
        return {};
    return QDateTime::fromMSecsSinceEpoch(qint64(milliseconds), Qt::UTC);
}

std::optional<QDateTime> fromSeconds(double seconds)
{
    return fromMoment(std::floor(seconds * 1000.0 + 0.5));
}

/// Reads the parts of a date from left to right.
class DateScanner {
public:
    explicit DateScanner(QByteArrayView text) : m_text(text) { }

    [[nodiscard]] bool atEnd() const { return m_position == m_text.size(); }
    [[nodiscard]] bool isAhead(char character, qsizetype offset = 0) const
    {
        return m_position + offset < m_text.size() && m_text[m_position + offset] == character;
    }
    bool skip(char character)
    {
        if (!isAhead(character))
            return false;
        ++m_position;
        return true;
    }
    /// Exactly `count` digits, or nothing.
    std::optional<int> number(int count)
    {
        if (m_position + count > m_text.size())
            return {};
        int value = 0;
        for (int index = 0; index < count; ++index) {
            const char digit = m_text[m_position + index];
            if (digit < '0' || digit > '9')
                return {};
            value = value * 10 + (digit - '0');
        }
        m_position += count;
        return value;
    }
    /// One digit or more behind the point, as milliseconds; further digits are cut off.
    std::optional<int> milliseconds()
    {
        int value = 0;
        int digits = 0;
        while (const auto digit = number(1)) {
            if (digits++ < 3)
                value = value * 10 + *digit;
        }
        if (digits == 0)
            return {};
        for (; digits < 3; ++digits)
            value *= 10;
        return value;
    }

private:
    QByteArrayView m_text;
    qsizetype m_position = 0;
};

std::optional<QDate> scanDate(DateScanner &scanner)
{
    const auto year = scanner.number(4);
    if (!year || !scanner.skip('-'))
        return {};
    const auto month = scanner.number(2);
    if (!month || !scanner.skip('-'))
        return {};
    const auto day = scanner.number(2);
    if (!day || !QDate::isValid(*year, *month, *day))
        return {};
    return QDate(*year, *month, *day);
}

std::optional<QTime> scanTime(DateScanner &scanner)
{
    const auto hour = scanner.number(2);
    if (!hour || !scanner.skip(':'))
        return {};
    const auto minute = scanner.number(2);
    if (!minute)
        return {};
    std::optional<int> second = 0;
    std::optional<int> millisecond = 0;
    if (scanner.skip(':')) {
        second = scanner.number(2);
        if (second && scanner.skip('.'))
            millisecond = scanner.milliseconds();
    }
    if (!second || !millisecond || !QTime::isValid(*hour, *minute, *second, *millisecond))
        return {};
    return QTime(*hour, *minute, *second, *millisecond);
}

/// Seconds east of UTC.
std::optional<int> scanZone(DateScanner &scanner)
{
    while (scanner.skip(' ')) { }
    if (scanner.atEnd() || scanner.skip('Z') || scanner.skip('z'))
        return 0;
    const bool west = scanner.isAhead('-');
    if (!scanner.skip('+') && !scanner.skip('-'))
        return {};
    const auto hours = scanner.number(2);
    if (!hours || !scanner.skip(':'))
        return {};
    const auto minutes = scanner.number(2);
    if (!minutes || *hours > 14 || *minutes > 59)
        return {};
    const int seconds = (*hours * 60 + *minutes) * 60;
    return west ? -seconds : seconds;
}

void writeDigits(QByteArray &text, int position, int count, int value)
{
    for (int index = position + count - 1; index >= position; --index, value /= 10)
        text[index] = char('0' + value % 10);
}

[[noreturn]] void refuse(const char *column, const ValueView &view, const QString &expected)
{
    const QString found = view.isNull() ? u"nothing is stored"_s : u"it isn't %1"_s.arg(expected);
    throw DatabaseError::undecodable(QString::fromUtf8(column), found);
}

} // namespace

namespace ValueEncoding {

DatabaseValue encoded(const QUuid &value)
{
    return BlobValue{value.toRfc4122()};
}

DatabaseValue encoded(const QDateTime &value)
{
    const QDateTime utc = value.toUTC();
    const QDate date = utc.date();
    const QTime time = utc.time();
    QByteArray text = QByteArrayLiteral("0000-00-00 00:00:00.000");
    writeDigits(text, 0, 4, date.year());
    writeDigits(text, 5, 2, date.month());
    writeDigits(text, 8, 2, date.day());
    writeDigits(text, 11, 2, time.hour());
    writeDigits(text, 14, 2, time.minute());
    writeDigits(text, 17, 2, time.second());
    writeDigits(text, 20, 3, time.msec());
    return TextValue{text};
}

DatabaseValue encoded(const QString &value)
{
    return TextValue{replaceUnpairedSurrogates(value).toUtf8()};
}

std::optional<QUuid> identifier(const ValueView &view)
{
    if (view.kind == ValueView::Kind::blob && view.bytes.size() == 16)
        return QUuid::fromRfc4122(view.bytes);
    if (view.kind != ValueView::Kind::text || view.bytes.size() != 36)
        return {};
    const QUuid parsed = QUuid::fromString(QLatin1StringView(view.bytes));
    // QUuid::fromString also returns the null identifier for what it can't parse.
    if (parsed.isNull() && view.bytes != QByteArrayView("00000000-0000-0000-0000-000000000000"))
        return {};
    return parsed;
}

std::optional<QDateTime> parsedDate(QByteArrayView text)
{
    DateScanner scanner(text);
    std::optional<QDate> date(std::in_place, 2000, 1, 1);
    const bool timeAlone = scanner.isAhead(':', 2);
    if (!timeAlone)
        date = scanDate(scanner);
    if (!date)
        return {};
    std::optional<QTime> time(std::in_place, 0, 0);
    std::optional<int> zone = 0;
    if (timeAlone || scanner.skip(' ') || scanner.skip('T')) {
        time = scanTime(scanner);
        zone = time ? scanZone(scanner) : std::nullopt;
    }
    if (!time || !zone || !scanner.atEnd())
        return {};
    return fromMoment(double(QDateTime(*date, *time, Qt::UTC).addSecs(-*zone).toMSecsSinceEpoch()));
}

std::optional<QDateTime> date(const ValueView &view)
{
    switch (view.kind) {
    case ValueView::Kind::text:
    case ValueView::Kind::blob:
        return parsedDate(view.bytes);
    case ValueView::Kind::integer:
        return fromSeconds(double(view.integer));
    case ValueView::Kind::real:
        return fromSeconds(view.real);
    case ValueView::Kind::null:
        return {};
    }
    Q_UNREACHABLE();
}

void decode(const ValueView &view, const char *column, QUuid &value)
{
    const auto decoded = identifier(view);
    if (!decoded)
        refuse(column, view, u"an identifier"_s);
    value = *decoded;
}

void decode(const ValueView &view, const char *column, QDateTime &value)
{
    const auto decoded = date(view);
    if (!decoded)
        refuse(column, view, u"a date"_s);
    value = *decoded;
}

void decode(const ValueView &view, const char *column, QString &value)
{
    if (view.kind != ValueView::Kind::text)
        refuse(column, view, u"a text"_s);
    value = TextDecoder::unmarkedUtf8(view.bytes);
}

void decode(const ValueView &view, const char *column, qint64 &value)
{
    if (view.kind != ValueView::Kind::integer)
        refuse(column, view, u"a whole number"_s);
    value = view.integer;
}

} // namespace ValueEncoding
