#include "platform/LocaleText.h"

#include <QDateTime>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(LocaleText, WritesDatesAsEachLanguageDoes)
{
    const struct {
        QString locale;
        QString march;
        QString november;
        QString moment;
    } rows[]{
        {u"en"_s, u"Mar 5"_s, u"Nov 25"_s, u"March 5, 2024 at 2:07 PM"_s},
        {u"en-GB"_s, u"5 Mar"_s, u"25 Nov"_s, u"5 March 2024 at 14:07"_s},
        {u"de"_s, u"5. März"_s, u"25. Nov."_s, u"5. März 2024 um 14:07"_s},
        {u"ja"_s, u"3月5日"_s, u"11月25日"_s, u"2024年3月5日 14:07"_s},
        {u"hu"_s, u"márc. 5."_s, u"nov. 25."_s, u"2024. március 5. 14:07"_s},
    };
    const auto plain = [](QString text) { return text.replace(u'\u202F', u' '); }; // newer data narrows the blank
    for (const auto &row : rows) {
        SCOPED_TRACE(row.locale.toStdString());
        const QDateTime march(QDate(2024, 3, 5), QTime(14, 7));
        EXPECT_EQ(LocaleText::monthAndDay(march, row.locale), row.march);
        EXPECT_EQ(LocaleText::monthAndDay(march.addDays(265), row.locale), row.november);
        EXPECT_EQ(plain(LocaleText::longDateAndShortTime(march.toUTC(), row.locale)), row.moment);
    }
}

TEST(LocaleText, TakesTheLocaleFromTheEnvironment)
{
    const QByteArray before = qgetenv("LC_ALL");
    const std::pair<const char *, QString> rows[]{{"de_AT.UTF-8", u"de-AT"_s}, {"zh_TW.UTF-8", u"zh-TW"_s},
        {"C.UTF-8", u"en"_s}, {"POSIX", u"en"_s}, {"nonsense", u"en"_s}};
    for (const auto &[name, expected] : rows) {
        qputenv("LC_ALL", name);
        EXPECT_EQ(LocaleText::dateLocale(), expected) << name;
    }
    before.isNull() ? qunsetenv("LC_ALL") : qputenv("LC_ALL", before);
}
