#include "workspace/results/WordFreqResultsView.h"

#include "ShownView.h"
#include "kit/controls/ElidedLabel.h"
#include "kit/lists/SnippetRowDelegate.h"

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

TEST_F(FrequencyResults, ListsTermsWithTheirCountsOrSaysThatThereAreNone)
{
    const Document blank = library.paste(u"Blank"_s, u"…"_s);
    library.paste(u"Notes"_s, u"phone phone phone phone table table chair"_s);
    count();
    open();
    EXPECT_EQ(title(), u"All documents"_s);
    EXPECT_EQ(countLine(), u"3 terms"_s);
    EXPECT_EQ(textsOf(terms()), (QStringList{u"phone"_s, u"table"_s, u"chair"_s}));
    EXPECT_EQ(spoken(terms(), 0), u"phone, 4 occurrences"_s);
    EXPECT_EQ(spoken(terms(), 2), u"chair, 1 occurrence"_s);
    count(WordFrequency::InDocument{blank.id});
    EXPECT_EQ(title(), u"Blank"_s);
    EXPECT_EQ(countLine(), u"0 terms"_s);
    EXPECT_FALSE(terms().isVisible());
    EXPECT_TRUE(showsPage(u"noTerms"_s));
}

TEST_F(FrequencyResults, ClicksLeadToTheOccurrencesIntoTheirDocumentAndBack)
{
    const Document notes = library.paste(u"Notes"_s, u"a phone and a Phone on the table"_s);
    library.paste(u"Other"_s, u"words"_s);
    count();
    open();
    click(terms(), 0);
    EXPECT_EQ(library.store.wordFreqSelectedTerm().get(), u"phone"_s);
    EXPECT_EQ(title(), u"“phone”"_s);
    EXPECT_EQ(countLine(), u"2 occurrences"_s);
    EXPECT_FALSE(terms().isVisible());
    EXPECT_EQ(spoken(occurrences(), 0), u"a phone and a Phone on the table, Notes"_s);
    click(occurrences(), 1);
    EXPECT_EQ(library.store.selectedDocumentID().get(), notes.id);
    EXPECT_EQ(revealedRange(), (TextRange{14, 5}));
    EXPECT_EQ(library.store.sidebarSelection().get(), SidebarSelection(WordFreqSelection{}));
    EXPECT_TRUE(occurrences().isVisible());

    QTest::mouseClick(&topTerms(), Qt::LeftButton);
    EXPECT_EQ(library.store.wordFreqSelectedTerm().get(), std::nullopt);
    EXPECT_TRUE(terms().isVisible());
    click(terms(), 1);
    EXPECT_EQ(countLine(), u"1 occurrence"_s);
    count(); // a new run returns to the terms
    EXPECT_TRUE(terms().isVisible());
    EXPECT_EQ(title(), u"All documents"_s);
    pressButton(u"All Documents"_s);
    EXPECT_FALSE(std::holds_alternative<WordFreqSelection>(library.store.sidebarSelection()->value()));
    EXPECT_EQ(library.store.wordFreqItems()->size(), 3) << "the run stays in the store";
}

TEST_F(FrequencyResults, TheKeyboardGoesInAndOutAndKeepsItsPlace)
{
    const Document notes = library.paste(u"Notes"_s, u"phone phone phone table table chair"_s);
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

    library.store.deleteDocument(notes);
    QTest::keyClick(&terms(), Qt::Key_Return);
    EXPECT_TRUE(showsPage(u"noOccurrences"_s));
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
