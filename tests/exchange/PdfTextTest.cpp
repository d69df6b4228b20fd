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

/// A one-page document that says "ABC", with `pageTree` as the object that lists the pages, and no table of objects.
QByteArray document(QByteArrayView pageTree, QByteArrayView characterNames = {})
{
    const QByteArray words = "BT /F1 12 Tf 50 700 Td <414243> Tj ET";
    const QByteArray names = "begincmap 1 begincodespacerange <00> <FF> endcodespacerange 1 beginbfchar "
        + characterNames.toByteArray() + " endbfchar endcmap";
    const auto stream = [](const QByteArray &content) {
        return "<< /Length " + QByteArray::number(content.size()) + " >>\nstream\n" + content + "\nendstream\nendobj\n";
    };
    return "%PDF-1.4\n1 0 obj\n<< /Type /Catalog /Pages 2 0 R >>\nendobj\n2 0 obj\n" + pageTree.toByteArray()
        + "\nendobj\n3 0 obj\n<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /ToUnicode 4 0 R >>\nendobj\n4 0 "
          "obj\n"
        + stream(names) + "5 0 obj\n" + stream(words)
        + "6 0 obj\n<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Contents 5 0 R /Resources << /Font << /F1 3 "
          "0 R "
          ">> >> >>\nendobj\ntrailer << /Root 1 0 R /Size 7 >>\n%%EOF";
}

constexpr auto onePage = "<< /Type /Pages /Kids [6 0 R] /Count 1 >>";

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

TEST(PdfText, KeepsAccentsIdeographsAndEmoji)
{
    const QStringList pages = PdfText::pages(fixture(u"interview.pdf"_s)).value_or(QStringList());
    ASSERT_EQ(pages.size(), 2);
    for (const QString &words : {u"Interview with Zoë"_s, u"Trust & doubt"_s, u"“I trusted them”"_s,
             u"in a café, naïvely."_s, u"laughed \U0001F600 and wrote 信任 on the board."_s, u"Said in the hallway."_s})
        EXPECT_TRUE(pages.first().contains(words)) << words.toStdString();
    EXPECT_EQ(pages.last().trimmed(), u"A second page."_s);
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
        BrokenCase{"only_a_picture", [] { return fixture(u"scan.pdf"_s); }, QStringList(QString())},
        BrokenCase{"no_table_of_objects", [] { return document(onePage); }, QStringList(u"ABC"_s)},
        BrokenCase{"no_pages", [] { return document("<< /Type /Pages /Kids [] /Count 0 >>"); }, QStringList()},
        BrokenCase{"pages_within_themselves", [] { return document("<< /Type /Pages /Kids [2 0 R] /Count 1 >>"); },
            QStringList(QString())},
        BrokenCase{"more_pages_than_objects",
            [] { return document("<< /Type /Pages /Kids [6 0 R] /Count 2147483647 >>"); }, QStringList()},
        BrokenCase{"character_that_is_a_pair", [] { return document(onePage, "<42> <D83DDE00>"); },
            QStringList(u"A\U0001F600C"_s)},
        BrokenCase{"character_that_is_half_a_pair", [] { return document(onePage, "<42> <D83D>"); },
            QStringList(u"A\uFFFDC"_s)}),
    rowName);

} // namespace
