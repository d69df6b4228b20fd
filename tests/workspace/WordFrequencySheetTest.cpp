#include "workspace/sheets/WordFrequencySheet.h"

#include "ShownSheets.h"
#include "workspace/controls/ElidedLabel.h"
#include "workspace/controls/SegmentedControl.h"
#include "workspace/controls/Stepper.h"
#include "workspace/controls/ToggleSwitch.h"
#include "workspace/sheets/PopUpList.h"

#include <QAbstractItemView>

using namespace Qt::StringLiterals;

namespace {

enum Kind { all, document, code };

/// The real sheet over the real store.
class FrequencySheet : public ShownSheets {
protected:
    FrequencySheet()
    {
        library.makeCodes({u"Trust"_s, u"Doubt"_s});
        notes = library.paste(u"Notes"_s, u"the phone and the table, a phone so ab"_s);
        other = library.paste(u"Other"_s, u"some other words"_s);
    }
    void open() { ShownSheets::open(library.store.showWordFreqSheet()); }
    [[nodiscard]] SegmentedControl &kind() const { return find<SegmentedControl>(u"scopeKind"_s); }
    [[nodiscard]] PopUpList &documents() const { return find<PopUpList>(u"scopeDocument"_s); }
    [[nodiscard]] PopUpList &codes() const { return find<PopUpList>(u"scopeCode"_s); }
    [[nodiscard]] SegmentedControl &limit() const { return find<SegmentedControl>(u"limit"_s); }
    [[nodiscard]] ToggleSwitch &ignoresStopwords() const { return find<ToggleSwitch>(u"ignoreStopwords"_s); }
    [[nodiscard]] QString minLengthLabel() const { return find<ElidedLabel>(u"minLengthLabel"_s).text(); }
    [[nodiscard]] bool canRun() const { return button(u"count"_s).isEnabled(); }
    using ShownSheets::choose;
    void step(Qt::Key key, int times) const
    {
        for (int time = 0; time < times; ++time)
            QTest::keyClick(&find<Stepper>(u"minLength"_s), key);
    }
    /// Chooses from the opened list, as the keyboard does.
    static void choose(PopUpList &list, int row)
    {
        list.showPopup();
        QTest::keyClick(list.view(), Qt::Key_Home);
        for (int step = 0; step < row; ++step)
            QTest::keyClick(list.view(), Qt::Key_Down);
        QTest::keyClick(list.view(), Qt::Key_Return);
        QApplication::processEvents();
    }
    [[nodiscard]] QStringList terms() const
    {
        QStringList terms;
        for (const WordFrequency::Item &item : library.store.wordFreqItems().get())
            terms.append(item.term);
        return terms;
    }

    Document notes;
    Document other;
};

using StepCase = Case<int, qint64>; // steps upwards
class MinLength : public FrequencySheet, public testing::WithParamInterface<StepCase> { };

} // namespace

TEST_P(MinLength, StaysWithinItsRange)
{
    open();
    step(GetParam().given < 0 ? Qt::Key_Down : Qt::Key_Up, std::abs(GetParam().given));
    EXPECT_EQ(minLengthLabel(), u"Min length: %1"_s.arg(GetParam().expected));
    click(u"count"_s);
    EXPECT_EQ(library.store.wordFreqMinLength().get(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Steps, MinLength,
    testing::Values(StepCase{"starts_at_three", 0, 3}, StepCase{"one_up", 1, 4}, StepCase{"stops_at_two", -5, 2},
        StepCase{"stops_at_eight", 9, 8}),
    rowName);

TEST_F(FrequencySheet, CountsAllDocumentsUnlessToldOtherwise)
{
    open();
    EXPECT_TRUE(canRun());
    EXPECT_FALSE(documents().isVisible());
    EXPECT_FALSE(codes().isVisible());
    EXPECT_TRUE(kind().hasFocus());
    press(Qt::Key_Return);
    EXPECT_EQ(library.store.wordFreqScope().get(), WordFrequency::Scope(WordFrequency::AllDocuments{}));
    EXPECT_TRUE(library.store.wordFreqIgnoreStopwords().get());
    EXPECT_EQ(terms().first(), u"phone"_s);
    EXPECT_FALSE(terms().contains(u"the"_s));
    EXPECT_EQ(library.store.sidebarSelection().get(), SidebarSelection(WordFreqSelection{}));
    EXPECT_FALSE(library.store.showWordFreqSheet().get());
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(FrequencySheet, ADocumentMustBeChosenAndIsCountedAlone)
{
    open();
    choose(kind(), document);
    EXPECT_TRUE(documents().isVisible());
    EXPECT_FALSE(codes().isVisible());
    EXPECT_FALSE(canRun());
    press(Qt::Key_Return); // means the button, which rests
    ASSERT_NE(sheet(), nullptr);
    choose(documents(), 2);
    EXPECT_EQ(documents().currentText(), u"Notes"_s); // newest first
    EXPECT_TRUE(canRun());
    QTest::mouseClick(&ignoresStopwords(), Qt::LeftButton);
    choose(limit(), 0);
    click(u"count"_s);
    EXPECT_EQ(library.store.wordFreqScope().get(), WordFrequency::Scope(WordFrequency::InDocument{notes.id}));
    EXPECT_FALSE(library.store.wordFreqIgnoreStopwords().get());
    EXPECT_EQ(library.store.wordFreqScopeLabel().get(), u"Notes"_s);
    EXPECT_EQ(terms(), (QStringList{u"phone"_s, u"the"_s, u"and"_s, u"table"_s}));
}

TEST_F(FrequencySheet, ACodeMustBeChosenAndTheOtherChoiceIsKept)
{
    library.store.assignCode(library.code(u"Doubt"_s), notes, {4, 5});
    open();
    choose(kind(), document);
    choose(documents(), 1);
    choose(kind(), code);
    EXPECT_FALSE(canRun());
    choose(kind(), all);
    EXPECT_TRUE(canRun());
    choose(kind(), code);
    choose(codes(), 2);
    choose(kind(), document);
    EXPECT_EQ(documents().chosenID(), other.id);
    EXPECT_TRUE(canRun());
    choose(kind(), code);
    choose(codes(), 0); // back to none
    EXPECT_FALSE(canRun());
    choose(codes(), 2);
    click(u"count"_s);
    EXPECT_EQ(
        library.store.wordFreqScope().get(), WordFrequency::Scope(WordFrequency::InCode{library.code(u"Doubt"_s).id}));
    EXPECT_EQ(terms(), QStringList{u"phone"_s});
}

TEST_F(FrequencySheet, TheLimitIsTheLengthOfTheList)
{
    QString text;
    for (int number = 0; number < 150; ++number)
        text += u"word%1 "_s.arg(number);
    library.paste(u"Many"_s, text);
    for (const auto &[segment, length] : {std::pair{0, 25}, {1, 50}, {2, 100}}) {
        open();
        choose(limit(), segment);
        click(u"count"_s);
        EXPECT_EQ(terms().size(), length);
    }
}

TEST_F(FrequencySheet, CancelRunsNothingAndTheNextTimeStartsAfresh)
{
    open();
    choose(kind(), document);
    choose(documents(), 1);
    step(Qt::Key_Up, 2);
    choose(limit(), 2);
    QTest::mouseClick(&ignoresStopwords(), Qt::LeftButton);
    click(u"cancel"_s);
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_TRUE(terms().isEmpty());
    EXPECT_FALSE(library.store.showWordFreqSheet().get());
    EXPECT_TRUE(before.hasFocus());
    open();
    EXPECT_EQ(kind().currentIndex(), int(all));
    EXPECT_EQ(documents().chosenID(), std::nullopt);
    EXPECT_EQ(minLengthLabel(), u"Min length: 3"_s);
    EXPECT_EQ(limit().currentIndex(), 1);
    EXPECT_TRUE(ignoresStopwords().isChecked());
}

TEST_F(FrequencySheet, LongNamesAndManyOfThemDoNotWidenAnything)
{
    open();
    choose(kind(), document);
    const int width = documents().width();
    const int height = sheet()->height();
    library.paste(u"two\nlines\tand "_s + QString(300, u'W'), u"text"_s);
    for (int number = 0; number < 40; ++number)
        library.paste(u"Document %1"_s.arg(number), u"text"_s);
    QApplication::processEvents();
    EXPECT_EQ(documents().count(), 44);
    EXPECT_EQ(documents().width(), width);
    EXPECT_EQ(sheet()->height(), height);
    EXPECT_TRUE(documents().itemText(41).startsWith(u"two lines and W"_s));
    documents().showPopup();
    EXPECT_LE(documents().view()->width(), sheet()->width());
    documents().hidePopup();
}

TEST_F(FrequencySheet, AChosenDocumentStaysChosenUntilItIsGone)
{
    open();
    choose(kind(), document);
    choose(documents(), 2);
    library.paste(u"Newer"_s, u"text"_s);
    EXPECT_EQ(documents().chosenID(), notes.id);
    EXPECT_EQ(documents().currentText(), u"Notes"_s);
    library.store.deleteDocument(notes);
    EXPECT_EQ(documents().chosenID(), std::nullopt);
    EXPECT_FALSE(canRun());
}
