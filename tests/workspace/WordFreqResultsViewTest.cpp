#include "workspace/results/WordFreqResultsView.h"

#include "ShownView.h"
#include "workspace/controls/ElidedLabel.h"
#include "workspace/lists/SnippetRowDelegate.h"
#include "workspace/results/TermRowDelegate.h"

using namespace Qt::StringLiterals;

namespace {

class FrequencyResults : public ShownView<WordFreqResultsView> {
protected:
    void count(const WordFrequency::Scope &scope = WordFrequency::AllDocuments{}, bool ignoresStopwords = true)
    {
        library.store.runWordFrequency(scope, 3, ignoresStopwords, 50);
        QApplication::processEvents();
    }
    [[nodiscard]] RowList &terms() const { return find<RowList>(u"termList"_s); }
    [[nodiscard]] RowList &occurrences() const { return find<RowList>(u"occurrenceList"_s); }
    [[nodiscard]] QPushButton &topTerms() const { return find<QPushButton>(u"topTerms"_s); }
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
    /// What is emphasised in the context of that row.
    [[nodiscard]] QString emphasis(int number) const
    {
        const QModelIndex index = row(occurrences(), number);
        return index.data().toString().mid(index.data(SnippetRowDelegate::emphasisStartRole).toInt(),
            index.data(SnippetRowDelegate::emphasisLengthRole).toInt());
    }
};

} // namespace

TEST(TermRowDelegate, ScalesABarToTheTopTerm)
{
    EXPECT_DOUBLE_EQ(TermRowDelegate::barWidth(3, 4), 67.5);
    EXPECT_DOUBLE_EQ(TermRowDelegate::barWidth(1, 1000), 4) << "never less";
    EXPECT_DOUBLE_EQ(TermRowDelegate::barWidth(0, 0), 4);
    EXPECT_DOUBLE_EQ(TermRowDelegate::barWidth(1'000'000'000'000, 4'000'000'000'000), 22.5);
}

TEST_F(FrequencyResults, ListsTermsWithTheirCounts)
{
    library.paste(u"Notes"_s, u"phone phone phone phone table table chair"_s);
    count();
    open();
    EXPECT_EQ(title(), u"All documents"_s);
    EXPECT_EQ(countLine(), u"3 terms"_s);
    EXPECT_EQ(textsOf(terms()), (QStringList{u"phone"_s, u"table"_s, u"chair"_s}));
    EXPECT_EQ(spoken(terms(), 0), u"phone, 4 occurrences"_s);
    EXPECT_EQ(spoken(terms(), 2), u"chair, 1 occurrence"_s);
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
    pressButton(u"All Documents"_s);
    EXPECT_FALSE(std::holds_alternative<WordFreqSelection>(library.store.sidebarSelection()->value()));
    EXPECT_EQ(library.store.wordFreqItems()->size(), 2) << "the run stays in the store";
}

TEST_F(FrequencyResults, AnOccurrenceOpensItsDocumentAndTheListStays)
{
    const Document notes = library.paste(u"Notes"_s, u"the phone, my phone"_s);
    library.paste(u"Other"_s, u"words"_s);
    count();
    open();
    library.store.selectWordFreqTerm(u"phone"_s);
    EXPECT_EQ(spoken(occurrences(), 0), u"the phone, my phone, Notes"_s);
    click(occurrences(), 1);
    EXPECT_EQ(library.store.selectedDocumentID().get(), notes.id);
    EXPECT_EQ(revealedRange(), (TextRange{14, 5}));
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
    EXPECT_EQ(revealedRange(), (TextRange{24, 5}));
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
    EXPECT_EQ(textsOf(u"noOccurrences"_s).first(), u"No Occurrences"_s);
    EXPECT_EQ(countLine(), u"0 occurrences"_s);
    EXPECT_TRUE(topTerms().hasFocus());
}

using MatchCase = Case<std::pair<QString, QString>, QStringList>; // text and term; in the rows of the list
class Emphasis : public FrequencyResults, public testing::WithParamInterface<MatchCase> { };
TEST_P(Emphasis, IsOnTheFirstPlaceThatMatches)
{
    library.paste(u"Notes"_s, GetParam().given.first);
    count();
    open();
    library.store.selectWordFreqTerm(GetParam().given.second);
    QStringList emphases;
    for (int row = 0; row < occurrences().model()->rowCount(); ++row)
        emphases.append(emphasis(row));
    EXPECT_EQ(emphases, GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(OccurrenceList, Emphasis,
    testing::Values(MatchCase{"capitals_in_the_text", {u"My PHONE"_s, u"phone"_s}, {u"PHONE"_s}},
        MatchCase{"first_of_two_in_both_rows", {u"Phone phone"_s, u"phone"_s}, {u"Phone"_s, u"Phone"_s}},
        MatchCase{"not_always_the_token", {u"headPHONE phone"_s, u"phone"_s}, {u"PHONE"_s}},
        MatchCase{"astral_letters_before", {u"😀😀 the Phone"_s, u"phone"_s}, {u"Phone"_s}},
        MatchCase{"lower_case_longer_before", {u"\u0130\u0130\u0130 Phone"_s, u"phone"_s}, {u"Phone"_s}},
        MatchCase{
            "a_word_longer_than_any_row", {u"so "_s + QString(3000, u'A'), QString(3000, u'a')}, {QString(800, u'A')}}),
    rowName);
