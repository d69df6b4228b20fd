#include "workspace/results/WordFreqResultsView.h"

#include "support/TestLibrary.h"
#include "workspace/controls/ElidedLabel.h"
#include "workspace/controls/Paragraph.h"
#include "workspace/lists/RowList.h"
#include "workspace/lists/SnippetRowDelegate.h"
#include "workspace/results/TermRowDelegate.h"
#include "workspace/theme/ThemeColors.h"
#include "workspace/theme/ThemedTest.h"

#include <QPushButton>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The real view over the real store.
class FrequencyResults : public ThemedTest {
protected:
    ~FrequencyResults() override { delete view; } // before the store
    void open()
    {
        view = new WordFreqResultsView(library.store, &m_window);
        view->resize(285, 500);
        showWindow();
        QApplication::processEvents();
    }
    void count(const WordFrequency::Scope &scope = WordFrequency::AllDocuments{}, bool ignoresStopwords = true)
    {
        library.store.runWordFrequency(scope, 3, ignoresStopwords, 50);
        QApplication::processEvents();
    }
    [[nodiscard]] RowList &terms() const { return *view->findChild<RowList *>(u"termList"_s); }
    [[nodiscard]] RowList &occurrences() const { return *view->findChild<RowList *>(u"occurrenceList"_s); }
    [[nodiscard]] QPushButton &topTerms() const { return *view->findChild<QPushButton *>(u"topTerms"_s); }
    /// The text of the one that can be seen.
    [[nodiscard]] QString header(const QString &name) const
    {
        for (const auto *label : view->findChildren<ElidedLabel *>(name)) {
            if (label->isVisible())
                return label->text();
        }
        return u"(hidden)"_s;
    }
    [[nodiscard]] QString title() const { return header(u"resultTitle"_s); }
    [[nodiscard]] QString countLine() const { return header(u"resultCount"_s); }
    [[nodiscard]] QStringList textsOf(const QString &panel) const
    {
        const auto *found = view->findChild<QWidget *>(panel);
        QStringList texts;
        for (const auto *paragraph : found->findChildren<Paragraph *>()) {
            if (paragraph->isVisible())
                texts.append(paragraph->text());
        }
        return texts;
    }
    static void click(RowList &list, int row)
    {
        const QRect rect = list.visualRect(list.model()->index(row, 0));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, rect.center());
        QApplication::processEvents();
    }
    static QStringList textsOf(const RowList &list)
    {
        QStringList texts;
        for (int row = 0; row < list.model()->rowCount(); ++row)
            texts.append(list.model()->index(row, 0).data().toString());
        return texts;
    }
    /// What is emphasised in the context of that row.
    [[nodiscard]] QString emphasis(int row) const
    {
        const QModelIndex index = occurrences().model()->index(row, 0);
        return index.data().toString().mid(index.data(SnippetRowDelegate::emphasisStartRole).toInt(),
            index.data(SnippetRowDelegate::emphasisLengthRole).toInt());
    }
    /// How many pixels of the bar's colour stand beside each other in the middle of that row.
    [[nodiscard]] int paintedBar(int row) const
    {
        const QRect rect = terms().visualRect(terms().model()->index(row, 0));
        const QImage picture = terms().viewport()->grab().toImage();
        const QColor bar = mixed(Theme::colors().content, Theme::colors().wordBar);
        int width = 0;
        for (int x = rect.left(); x < rect.right(); ++x)
            width += isClose(picture.pixelColor(x, rect.bottom() - 13), bar) ? 1 : 0;
        return width;
    }

    /// Up to what mixing colours loses.
    static bool isClose(const QColor &one, const QColor &other)
    {
        return std::abs(one.red() - other.red()) + std::abs(one.green() - other.green())
            + std::abs(one.blue() - other.blue())
            <= 4;
    }

    TestLibrary library;
    WordFreqResultsView *view = nullptr;
};

struct BarCase {
    const char *name;
    qint64 count;
    qint64 topCount;
    double width;
};
class Bar : public testing::TestWithParam<BarCase> { };

} // namespace

TEST_P(Bar, IsScaledToTheTopTerm)
{
    EXPECT_DOUBLE_EQ(TermRowDelegate::barWidth(GetParam().count, GetParam().topCount), GetParam().width);
}

INSTANTIATE_TEST_SUITE_P(TermRowDelegate, Bar,
    testing::Values(BarCase{"the_top_term", 7, 7, 90}, BarCase{"half_of_it", 2, 4, 45},
        BarCase{"not_rounded", 3, 4, 67.5}, BarCase{"never_less_than_four", 1, 1000, 4},
        BarCase{"just_above_the_least", 5, 100, 4.5}, BarCase{"no_count_at_all", 0, 0, 4},
        BarCase{"counts_beyond_32_bits", 1'000'000'000'000, 4'000'000'000'000, 22.5}),
    rowName);

TEST_F(FrequencyResults, ListsTermsWithTheirCountsAndBars)
{
    library.paste(u"Notes"_s, u"phone phone phone phone table table chair"_s);
    count();
    open();
    EXPECT_EQ(title(), u"All documents"_s);
    EXPECT_EQ(countLine(), u"3 terms"_s);
    EXPECT_EQ(textsOf(terms()), (QStringList{u"phone"_s, u"table"_s, u"chair"_s}));
    EXPECT_EQ(terms().model()->index(0, 0).data(Qt::AccessibleTextRole).toString(), u"phone, 4 occurrences"_s);
    EXPECT_EQ(terms().model()->index(2, 0).data(Qt::AccessibleTextRole).toString(), u"chair, 1 occurrence"_s);
    EXPECT_EQ(terms().accessibleName(), u"Terms"_s);
    EXPECT_EQ(paintedBar(0), 90);
    EXPECT_EQ(paintedBar(1), 45);
    EXPECT_NEAR(paintedBar(2), 22.5, 1);
}

TEST_F(FrequencyResults, OneTermIsSpokenOfInThePluralAndNoneShowsAPanel)
{
    const Document notes = library.paste(u"Notes"_s, u"phone phone"_s);
    const Document blank = library.paste(u"Blank"_s, u"…"_s);
    count(WordFrequency::InDocument{notes.id});
    open();
    EXPECT_EQ(title(), u"Notes"_s);
    EXPECT_EQ(countLine(), u"1 terms"_s);
    count(WordFrequency::InDocument{blank.id});
    EXPECT_EQ(countLine(), u"0 terms"_s);
    EXPECT_FALSE(terms().isVisible());
    EXPECT_EQ(textsOf(u"noTerms"_s), (QStringList{u"No Terms"_s, u"Nothing countable found in this scope."_s}));
}

TEST_F(FrequencyResults, AClickOpensTheOccurrencesAndTopTermsLeadsBack)
{
    library.paste(u"Notes"_s, u"a phone and a Phone on the table"_s);
    count();
    open();
    click(terms(), 1);
    EXPECT_EQ(library.store.wordFreqSelectedTerm().get(), u"table"_s);
    EXPECT_EQ(title(), u"“table”"_s);
    EXPECT_EQ(countLine(), u"1 occurrence"_s);
    EXPECT_FALSE(terms().isVisible());
    EXPECT_EQ(topTerms().text(), u"Top terms"_s);
    QTest::mouseClick(&topTerms(), Qt::LeftButton);
    EXPECT_EQ(library.store.wordFreqSelectedTerm().get(), std::nullopt);
    EXPECT_TRUE(library.store.wordFreqOccurrences()->isEmpty());
    EXPECT_EQ(textsOf(terms()), (QStringList{u"phone"_s, u"table"_s}));
    EXPECT_TRUE(terms().isVisible());
    click(terms(), 0);
    EXPECT_EQ(countLine(), u"2 occurrences"_s);
    count(); // a new run returns to the terms
    EXPECT_TRUE(terms().isVisible());
    EXPECT_EQ(title(), u"All documents"_s);
}

TEST_F(FrequencyResults, AnOccurrenceOpensItsDocumentAndTheListStays)
{
    const Document notes = library.paste(u"Notes"_s, u"the phone, my phone"_s);
    library.paste(u"Other"_s, u"words"_s);
    count();
    open();
    library.store.selectWordFreqTerm(u"phone"_s);
    EXPECT_EQ(
        occurrences().model()->index(0, 0).data(Qt::AccessibleTextRole).toString(), u"the phone, my phone, Notes"_s);
    click(occurrences(), 1);
    EXPECT_EQ(library.store.selectedDocumentID().get(), notes.id);
    ASSERT_TRUE(library.store.revealRequest().get().has_value());
    EXPECT_EQ(library.store.revealRequest()->value().range, (TextRange{14, 5}));
    EXPECT_EQ(library.store.sidebarSelection().get(), SidebarSelection(WordFreqSelection{}));
    EXPECT_TRUE(occurrences().isVisible());
}

TEST_F(FrequencyResults, TheKeyboardGoesInAndOutAndKeepsItsPlace)
{
    library.paste(u"Notes"_s, u"phone phone phone table table chair"_s);
    count();
    open();
    terms().setFocus(Qt::TabFocusReason);
    QTest::keyClick(&terms(), Qt::Key_Down);
    QTest::keyClick(&terms(), Qt::Key_Return);
    EXPECT_EQ(library.store.wordFreqSelectedTerm().get(), u"table"_s);
    EXPECT_TRUE(occurrences().hasFocus());
    QTest::keyClick(&occurrences(), Qt::Key_Down);
    EXPECT_FALSE(library.store.revealRequest().get().has_value()); // moving isn't acting
    QTest::keyClick(&occurrences(), Qt::Key_Return);
    ASSERT_TRUE(library.store.revealRequest().get().has_value());
    EXPECT_EQ(library.store.revealRequest()->value().range, (TextRange{24, 5}));
    QTest::keyClick(&occurrences(), Qt::Key_Backtab);
    EXPECT_TRUE(topTerms().hasFocus());
    QTest::keyClick(&topTerms(), Qt::Key_Space);
    EXPECT_TRUE(terms().hasFocus());
    EXPECT_EQ(terms().currentIndex().row(), 1);
}

TEST_F(FrequencyResults, ATermThatIsGoneHasNoOccurrences)
{
    const Document notes = library.paste(u"Notes"_s, u"phone"_s);
    count();
    open();
    library.store.deleteDocument(notes);
    click(terms(), 0);
    EXPECT_FALSE(occurrences().isVisible());
    EXPECT_EQ(textsOf(u"noOccurrences"_s), QStringList{u"No Occurrences"_s});
    EXPECT_EQ(countLine(), u"0 occurrences"_s);
    EXPECT_TRUE(topTerms().hasFocus());
}

TEST_F(FrequencyResults, BackToTheDocumentsLeavesTheRunInTheStore)
{
    library.paste(u"Notes"_s, u"phone"_s);
    count();
    open();
    QTest::mouseClick(view->findChild<QPushButton *>(u"allDocuments"_s), Qt::LeftButton);
    EXPECT_FALSE(std::holds_alternative<WordFreqSelection>(library.store.sidebarSelection()->value()));
    EXPECT_EQ(library.store.wordFreqItems()->size(), 1);
}

struct MatchCase {
    const char *name;
    QString text;
    QString term;
    QStringList emphases; ///< in the rows of the list
};
class Emphasis : public FrequencyResults, public testing::WithParamInterface<MatchCase> { };
TEST_P(Emphasis, IsOnTheFirstPlaceThatMatches)
{
    library.paste(u"Notes"_s, GetParam().text);
    count();
    open();
    library.store.selectWordFreqTerm(GetParam().term);
    QStringList emphases;
    for (int row = 0; row < occurrences().model()->rowCount(); ++row)
        emphases.append(emphasis(row));
    EXPECT_EQ(emphases, GetParam().emphases);
}
INSTANTIATE_TEST_SUITE_P(OccurrenceList, Emphasis,
    testing::Values(MatchCase{"capitals_in_the_text", u"My PHONE"_s, u"phone"_s, {u"PHONE"_s}},
        MatchCase{"first_of_two_in_both_rows", u"Phone phone"_s, u"phone"_s, {u"Phone"_s, u"Phone"_s}},
        MatchCase{"not_always_the_token", u"headPHONE phone"_s, u"phone"_s, {u"PHONE"_s}},
        MatchCase{"astral_letters_before", u"😀😀 the Phone"_s, u"phone"_s, {u"Phone"_s}},
        MatchCase{"lower_case_longer_before", u"\u0130\u0130\u0130 Phone"_s, u"phone"_s, {u"Phone"_s}},
        MatchCase{
            "a_word_longer_than_any_row", u"so "_s + QString(3000, u'A'), QString(3000, u'a'), {QString(800, u'A')}}),
    rowName);

TEST_F(FrequencyResults, TheMatchIsPaintedInTheAccentAndOnlyOnce)
{
    library.paste(u"Notes"_s, u"phone, then a phone"_s);
    count();
    open();
    library.store.selectWordFreqTerm(u"phone"_s);
    QApplication::processEvents();
    const QRect row = occurrences().visualRect(occurrences().model()->index(0, 0));
    const QImage picture = occurrences().viewport()->grab(row).toImage();
    const QColor accent = Theme::colors().accentText;
    int last = -1;
    for (int x = 0; x < picture.width(); ++x) {
        for (int y = 0; y < picture.height(); ++y)
            last = picture.pixelColor(x, y) == accent ? x : last;
    }
    EXPECT_GT(last, 18);
    EXPECT_LT(last, 75); // the second one stands further to the right
}

TEST_F(FrequencyResults, AnotherTermBeginsAtTheTop)
{
    library.paste(u"Notes"_s, u"phone table "_s.repeated(200));
    count();
    open();
    library.store.selectWordFreqTerm(u"phone"_s);
    QApplication::processEvents();
    occurrences().scrollToBottom();
    EXPECT_GT(occurrences().verticalScrollBar()->value(), 0);
    library.store.selectWordFreqTerm(u"table"_s);
    QApplication::processEvents();
    EXPECT_EQ(occurrences().verticalScrollBar()->value(), 0);
    EXPECT_EQ(emphasis(0), u"table"_s);
}
