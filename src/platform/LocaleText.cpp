#include "platform/LocaleText.h"

#include <QDateTime>
#include <QHash>
#include <QLocale>
#include <QTimeZone>

#include <unicode/udat.h>
#include <unicode/udatpg.h>

#include <array>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// The locale, or that of the interface where none is set.
QLocale orEnglish(const QLocale &locale)
{
    return locale.language() == QLocale::C ? QLocale(QLocale::English, QLocale::UnitedStates) : locale;
}

struct CloseFormat {
    void operator()(UDateFormat *format) const { udat_close(format); }
};
using Format = std::unique_ptr<UDateFormat, CloseFormat>;

Format opened(UDateFormatStyle time, UDateFormatStyle date, const QByteArray &locale, QStringView pattern = {})
{
    UErrorCode status = U_ZERO_ERROR;
    return Format(
        udat_open(time, date, locale.constData(), u"UTC", -1, pattern.utf16(), int32_t(pattern.size()), &status));
}

Format monthAndDayFormat(const QByteArray &locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UDateTimePatternGenerator, decltype(&udatpg_close)> generator(
        udatpg_open(locale.constData(), &status), &udatpg_close);
    std::array<char16_t, 64> pattern{};
    const int32_t length =
        udatpg_getBestPattern(generator.get(), u"MMMd", -1, pattern.data(), int32_t(pattern.size()), &status);
    if (U_FAILURE(status))
        return {};
    return opened(UDAT_PATTERN, UDAT_PATTERN, locale, QStringView(pattern.data(), length));
}

Format longDateAndShortTimeFormat(const QByteArray &locale)
{
    return opened(UDAT_SHORT, UDAT_LONG, locale);
}

/// Formats local time as if it were UTC, so that ICU needs no time zone data, which may be missing.
QString formatted(const QDateTime &moment, const Format &format)
{
    const QDateTime local = moment.toLocalTime();
    if (!format)
        return local.toString(Qt::ISODate);
    const auto time = UDate(QDateTime(local.date(), local.time(), QTimeZone::utc()).toMSecsSinceEpoch());
    std::array<char16_t, 128> text{};
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = udat_format(format.get(), time, text.data(), int32_t(text.size()), nullptr, &status);
    return U_SUCCESS(status) ? QString::fromUtf16(text.data(), length) : local.toString(Qt::ISODate);
}

/// A cache: opening a format takes longer than painting a row with a date in it.
class Formats {
public:
    explicit Formats(Format (*open)(const QByteArray &locale)) : m_open(open) { }

    QString text(const QDateTime &moment, const QString &locale)
    {
        std::shared_ptr<const Format> &format = m_formats[locale];
        if (!format)
            format = std::make_shared<const Format>(m_open(locale.toUtf8()));
        return formatted(moment, *format);
    }

private:
    Format (*m_open)(const QByteArray &locale);
    QHash<QString, std::shared_ptr<const Format>> m_formats;
};

} // namespace

QString LocaleText::dateLocale()
{
    for (const char *variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const QString name = qEnvironmentVariable(variable);
        if (!name.isEmpty())
            return orEnglish(QLocale(name)).bcp47Name();
    }
    return orEnglish(QLocale::system()).bcp47Name();
}

QString LocaleText::longDateAndShortTime(const QDateTime &moment, const QString &locale)
{
    static Formats formats(&longDateAndShortTimeFormat);
    return formats.text(moment, locale);
}

QString LocaleText::monthAndDay(const QDateTime &moment, const QString &locale)
{
    static Formats formats(&monthAndDayFormat);
    return formats.text(moment, locale);
}

QString LocaleText::number(qint64 value)
{
    return orEnglish(QLocale::system()).toString(value);
}
