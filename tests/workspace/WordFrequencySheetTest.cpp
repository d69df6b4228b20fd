#include "workspace/sheets/WordFrequencySheet.h"

#include "ShownSheets.h"
#include "kit/controls/ElidedLabel.h"
#include "kit/controls/SegmentedControl.h"
#include "kit/controls/Stepper.h"
#include "kit/controls/ToggleSwitch.h"
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

} // namespace

TEST_F(FrequencySheet, CountsAllDocumentsUnlessToldOtherwise)
{
    open();
    EXPECT_TRUE(canRun());
    EXPECT_FALSE(documents().isVisible());
    EXPECT_FALSE(codes().isVisible());
    EXPECT_TRUE(kind().hasFocus());
    EXPECT_EQ(minLengthLabel(), u"Min length: 3"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(library.store.wordFreqScope().get(), WordFrequency::Scope(WordFrequency::AllDocuments{}));
    EXPECT_EQ(terms().first(), u"phone"_s);
    EXPECT_FALSE(terms().contains(u"the"_s));
    EXPECT_EQ(library.store.sidebarSelection().get(), SidebarSelection(WordFreqSelection{}));
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(FrequencySheet, ADocumentMustBeChosenAndIsCountedAsTheSheetSays)
{
    QString words = u"the ab phone the ab phone "_s;
    for (int number = 0; number < 150; ++number)
        words += u"word%1 "_s.arg(number);
    const Document many = library.paste(u"Many"_s, words);
    for (const auto &[segment, length] : {std::pair{0, 25}, {1, 50}, {2, 100}}) {
        open();
        choose(kind(), document);
        EXPECT_TRUE(documents().isVisible());
        EXPECT_FALSE(codes().isVisible());
        EXPECT_FALSE(canRun());
        press(Qt::Key_Return); // means the button, which rests
        ASSERT_NE(sheet(), nullptr);
        choose(documents(), 1);
        EXPECT_EQ(documents().currentText(), u"Many"_s); // newest first
        QTest::mouseClick(&ignoresStopwords(), Qt::LeftButton);
        choose(limit(), segment);
        step(Qt::Key_Up, 9); // it ends at eight
        EXPECT_EQ(minLengthLabel(), u"Min length: 8"_s);
        step(Qt::Key_Down, 9);
        EXPECT_EQ(minLengthLabel(), u"Min length: 2"_s);
        click(u"count"_s);
        EXPECT_EQ(library.store.wordFreqScope().get(), WordFrequency::Scope(WordFrequency::InDocument{many.id}));
        EXPECT_EQ(library.store.wordFreqScopeLabel().get(), u"Many"_s);
        EXPECT_EQ(terms().size(), length);
        for (const QString &term : {u"the"_s, u"ab"_s, u"phone"_s})
            EXPECT_TRUE(terms().first(3).contains(term)) << "common words, and words of two letters";
    }
}

TEST_F(FrequencySheet, ACodeMustBeChosenAndTheDocumentStaysChosenUntilItIsGone)
{
    library.store.assignCode(library.code(u"Doubt"_s), notes, {4, 5});
    open();
    choose(kind(), document);
    choose(documents(), 1);
    choose(kind(), code);
    for (const int row : {0, 2}) { // none at first
        choose(codes(), row);
        EXPECT_EQ(canRun(), row > 0);
    }
    library.paste(u"Newer"_s, u"text"_s);
    choose(kind(), document);
    EXPECT_EQ(documents().chosenID(), other.id);
    EXPECT_EQ(documents().currentText(), u"Other"_s);
    EXPECT_TRUE(canRun());
    library.store.deleteDocument(other);
    EXPECT_EQ(documents().chosenID(), std::nullopt);
    EXPECT_FALSE(canRun());
    choose(kind(), code);
    click(u"count"_s);
    EXPECT_EQ(
        library.store.wordFreqScope().get(), WordFrequency::Scope(WordFrequency::InCode{library.code(u"Doubt"_s).id}));
    EXPECT_EQ(terms(), QStringList{u"phone"_s});
}

TEST_F(FrequencySheet, LongNamesAndManyOfThemDoNotWidenAnything)
{
    open();
    choose(kind(), document);
    const QSize size = documents().size();
    library.paste(u"two\nlines\tand "_s + QString(300, u'W'), u"text"_s);
    for (int number = 0; number < 40; ++number)
        library.paste(u"Document %1"_s.arg(number), u"text"_s);
    QApplication::processEvents();
    EXPECT_EQ(documents().count(), 44);
    EXPECT_EQ(documents().size(), size);
    EXPECT_TRUE(documents().itemText(41).startsWith(u"two lines and W"_s));
    documents().showPopup();
    EXPECT_LE(documents().view()->width(), sheet()->width());
    documents().hidePopup();
}
