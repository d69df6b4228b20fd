#include "workspace/sheets/QuerySheet.h"

#include "ShownSheets.h"
#include "kit/controls/Paragraph.h"
#include "kit/controls/SegmentedControl.h"
#include "kit/lists/RowList.h"

#include <QAccessible>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

class QuerySheetTest : public ShownSheets {
protected:
    void open() { ShownSheets::open(library.store.showQuerySheet()); }
    [[nodiscard]] RowList &list() const { return find<RowList>(u"codeChoices"_s); }
    [[nodiscard]] SegmentedControl &mode() const { return find<SegmentedControl>(u"queryMode"_s); }
    [[nodiscard]] QString hint() const { return find<Paragraph>(u"choiceHint"_s).text(); }
    [[nodiscard]] bool canRun() const { return button(u"runQuery"_s).isEnabled(); }
    [[nodiscard]] QModelIndex row(int number) const { return list().model()->index(number, 0); }
    [[nodiscard]] QPoint placeOf(int number) const { return list().visualRect(row(number)).center(); }
    using ShownSheets::click;
    void click(int number) const { QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, placeOf(number)); }
    [[nodiscard]] QStringList chosen() const
    {
        QStringList names;
        for (const QModelIndex &index :
            list().model()->match(row(0), Qt::CheckStateRole, Qt::Checked, -1, Qt::MatchExactly))
            names.append(index.data().toString());
        return names;
    }
    [[nodiscard]] QStringList queried() const
    {
        QStringList names;
        for (const QUuid &id : library.store.activeQuery()->value_or(QuerySpec()).codeIDs)
            names.append(std::ranges::find(library.store.codes().get(), id, &Code::id)->name);
        return names;
    }
};

} // namespace

TEST_F(QuerySheetTest, SaysHowManyCodesAreMissing)
{
    library.makeCodes({u"One"_s, u"Two"_s});
    open();
    const QStringList hints{u"Pick at least 1 code."_s, u"Pick at least 2 codes to intersect."_s, u"1 selected"_s,
        u"Pick at least 2 codes to intersect."_s, u"2 selected"_s, u"2 selected"_s};
    for (int number = 0; number < 6; ++number) {
        choose(mode(), number % 2); // keeps what is chosen
        EXPECT_EQ(hint(), hints[number]);
        EXPECT_EQ(canRun(), hint().endsWith(u"selected"));
        if (number == 1 || number == 3)
            click(number / 2);
    }
}

TEST_F(QuerySheetTest, RunsWithTheCodesInTheOrderOfTheTree)
{
    library.makeCodes({u"One"_s, u"Two"_s, u"Three"_s, u"Four"_s});
    library.store.nestCode(library.code(u"Four"_s).id, library.code(u"One"_s).id);
    open();
    for (const int number : {3, 1, 0})
        click(number);
    choose(mode(), 1);
    QTest::keyClicks(&find<QLineEdit>(u"textFilter"_s), u"  some Words "_s);
    click(u"runQuery"_s);
    EXPECT_EQ(queried(), (QStringList{u"One"_s, u"Four"_s, u"Three"_s}));
    EXPECT_EQ(library.store.activeQuery()->value().mode, QuerySpec::Mode::all);
    EXPECT_EQ(library.store.activeQuery()->value().textFilter, u"  some Words "_s);
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_TRUE(before.hasFocus());
}

TEST_F(QuerySheetTest, IsServedByTheKeyboardAlone)
{
    library.makeCodes({u"One"_s, u"Two"_s, u"Three"_s});
    open();
    press(Qt::Key_Right);
    EXPECT_EQ(mode().currentIndex(), 1);
    EXPECT_EQ(tabbedThrough(2), (QStringList{u"textFilter"_s, u"codeChoices"_s}));
    press(Qt::Key_Space);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(chosen(), QStringList{u"One"_s}); // moving isn't choosing
    press(Qt::Key_Return);
    EXPECT_NE(sheet(), nullptr); // one code is too few
    press(Qt::Key_Space);
    EXPECT_EQ(chosen(), (QStringList{u"One"_s, u"Three"_s}));
    EXPECT_EQ(
        tabbedThrough(5), (QStringList{u"cancel"_s, u"runQuery"_s, u"queryMode"_s, u"textFilter"_s, u"codeChoices"_s}));
    button(u"cancel"_s).setFocus(Qt::TabFocusReason);
    press(Qt::Key_Return); // means the default button there, too
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_EQ(queried(), (QStringList{u"One"_s, u"Three"_s}));
}

TEST_F(QuerySheetTest, TwoFastClicksAreTwoClicks)
{
    library.makeCodes({u"One"_s});
    open();
    click(0);
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, placeOf(0));
    EXPECT_EQ(chosen(), QStringList{u"One"_s}); // on, off and on again
    QTest::mouseClick(list().viewport(), Qt::RightButton, {}, placeOf(0));
    EXPECT_EQ(chosen(), QStringList{u"One"_s});
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, {list().viewport()->width() - 3, placeOf(0).y()});
    EXPECT_EQ(chosen(), QStringList()); // the row is a button all over
}

TEST_F(QuerySheetTest, CodesThatComeAndGoAreListedAndNoLongerChosen)
{
    open();
    EXPECT_TRUE(find<Paragraph>(u"noCodes"_s).isVisible());
    EXPECT_FALSE(canRun());
    library.makeCodes({u"One"_s, u"Two"_s});
    EXPECT_FALSE(find<Paragraph>(u"noCodes"_s).isVisible());
    click(0);
    click(1);
    library.store.deleteCode(library.code(u"One"_s));
    EXPECT_EQ(hint(), u"1 selected"_s);
    library.store.renameCode(library.code(u"Two"_s), u"Second"_s);
    EXPECT_EQ(chosen(), QStringList{u"Second"_s});
}

TEST_F(QuerySheetTest, ScreenReadersHearNamesCountsAndMarks)
{
    const Document document = library.paste(u"A"_s, u"some words"_s);
    library.makeCodes({u"One"_s, u"Two"_s});
    library.store.assignCode(library.code(u"Two"_s), document, {0, 4});
    open();
    click(1);
    QAccessibleInterface &choices = *QAccessible::queryAccessibleInterface(&list());
    EXPECT_EQ(choices.text(QAccessible::Name), u"Codes"_s);
    ASSERT_EQ(choices.childCount(), 2);
    EXPECT_EQ(choices.child(1)->text(QAccessible::Name), u"Two, 1 coded passages"_s);
    EXPECT_TRUE(choices.child(1)->state().checkable);
    EXPECT_TRUE(choices.child(1)->state().checked);
    EXPECT_FALSE(choices.child(0)->state().checked);
}
