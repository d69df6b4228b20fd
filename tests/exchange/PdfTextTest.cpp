#include "exchange/PdfText.h"

#include "support/Cases.h"

#include <QFile>
#include <QStringList>

#include <functional>
#include <optional>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray fixture(const QString &name)
{
    QFile file(QStringLiteral(VORN_FIXTURES "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

TEST(PdfText, ReadsColumnByColumn)
{
    const QStringList pages = PdfText::pages(fixture(u"two-columns.pdf"_s)).value_or(QStringList());
    ASSERT_EQ(pages.size(), 1);
    const QStringList order{u"two columns"_s, u"Left alpha"_s, u"first"_s, u"Left hotel"_s, u"Right alpha"_s,
        u"second"_s, u"Right hotel"_s};
    qsizetype last = -1;
    for (const QString &words : order) {
        const qsizetype position = pages.first().indexOf(words, last + 1);
        ASSERT_GT(position, last) << words.toStdString();
        last = position;
    }
}

TEST(PdfText, GivesAnEntryForEveryPage)
{
    QStringList pages = PdfText::pages(fixture(u"blank-pages.pdf"_s)).value_or(QStringList());
    for (QString &page : pages)
        page = page.trimmed();
    EXPECT_EQ(pages, QStringList({u"First page."_s, QString(), QString(), u"Fourth page."_s}));
}

struct BrokenCase {
    const char *name;
    std::function<QByteArray()> bytes;
    std::optional<QStringList> expected;
};

using BrokenPdf = testing::TestWithParam<BrokenCase>;

TEST_P(BrokenPdf, GivesWhatThereIsAndPrintsNothing)
{
    const QByteArray bytes = GetParam().bytes();
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    std::optional<QStringList> pages = PdfText::pages(bytes);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    if (pages)
        for (QString &page : *pages)
            page = page.trimmed();
    EXPECT_EQ(pages, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Bytes, BrokenPdf,
    testing::Values(BrokenCase{"something_else", [] { return QByteArray("no document at all"); }, {}},
        BrokenCase{"cut_in_the_middle", [] { return fixture(u"scan.pdf"_s).left(700); }, {}},
        BrokenCase{"locked", [] { return fixture(u"locked.pdf"_s); }, {}},
        BrokenCase{"only_a_picture", [] { return fixture(u"scan.pdf"_s); }, QStringList(QString())}),
    rowName);

} // namespace
