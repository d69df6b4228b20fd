#include "workspace/sheets/QuerySheet.h"

#include "ShownSheets.h"
#include "workspace/controls/Paragraph.h"
#include "workspace/controls/SegmentedControl.h"
#include "workspace/lists/RowList.h"

#include <QAccessible>
#include <QLineEdit>
#include <QScrollBar>

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
    [[nodiscard]] QList<int> chosen() const
    {
        QList<int> rows;
        for (int number = 0; number < list().model()->rowCount(); ++number) {
            if (row(number).data(Qt::CheckStateRole).toInt() == Qt::Checked)
                rows.append(number);
        }
        return rows;
    }
    void chooseMode(int index) const { choose(mode(), index); }
    [[nodiscard]] QList<QUuid> idsOf(const QStringList &names) const
    {
        QList<QUuid> ids;
        for (const QString &name : names)
            ids.append(library.code(name).id);
        return ids;
    }
    /// From the list's edge to the first thing that is painted in the row.
    [[nodiscard]] int paintedFrom(int number) const
    {
        const QImage picture = sheet()->grab().toImage();
        const QPoint start = list().viewport()->mapTo(sheet(), QPoint(0, placeOf(number).y()));
        int x = start.x() + 1;
        while (x < picture.width() && picture.pixelColor(x, start.y()) == picture.pixelColor(start.x() + 1, start.y()))
            ++x;
        return x - start.x();
    }
};

} // namespace

TEST_F(QuerySheetTest, SaysHowManyCodesAreMissing)
{
    library.makeCodes({u"One"_s, u"Two"_s, u"Three"_s});
    open();
    const auto expectHints = [this](const QString &any, const QString &all) {
        chooseMode(0);
        EXPECT_EQ(hint(), any);
        EXPECT_EQ(canRun(), any.endsWith(u"selected"));
        chooseMode(1); // keeps what is chosen
        EXPECT_EQ(hint(), all);
        EXPECT_EQ(canRun(), all.endsWith(u"selected"));
    };
    expectHints(u"Pick at least 1 code."_s, u"Pick at least 2 codes to intersect."_s);
    click(0);
    expectHints(u"1 selected"_s, u"Pick at least 2 codes to intersect."_s);
    click(1);
    expectHints(u"2 selected"_s, u"2 selected"_s);
}

TEST_F(QuerySheetTest, RunsWithTheCodesInTheOrderOfTheTree)
{
    library.makeCodes({u"One"_s, u"Two"_s, u"Three"_s, u"Four"_s});
    library.store.nestCode(library.code(u"Four"_s).id, library.code(u"One"_s).id);
    open();
    for (const int number : {3, 1, 0})
        click(number);
    chooseMode(1);
    QTest::keyClicks(&find<QLineEdit>(u"textFilter"_s), u"  some Words "_s);
    EXPECT_FALSE(library.store.activeQuery().get().has_value());
    click(u"runQuery"_s);
    EXPECT_EQ(library.store.activeQuery().get(),
        (QuerySpec{idsOf({u"One"_s, u"Four"_s, u"Three"_s}), QuerySpec::Mode::all, u"  some Words "_s}));
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_FALSE(library.store.showQuerySheet().get());
    EXPECT_TRUE(before.hasFocus());
}

TEST_F(QuerySheetTest, IsServedByTheKeyboardAlone)
{
    library.makeCodes({u"One"_s, u"Two"_s, u"Three"_s});
    open();
    press(Qt::Key_Right);
    EXPECT_EQ(mode().currentIndex(), 1);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    ASSERT_TRUE(list().hasFocus());
    press(Qt::Key_Space);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(chosen(), QList{0}); // moving isn't choosing
    press(Qt::Key_Return);
    EXPECT_NE(sheet(), nullptr); // one code is too few
    press(Qt::Key_Space);
    EXPECT_EQ(chosen(), (QList{0, 2}));
    press(Qt::Key_Return);
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_EQ(library.store.activeQuery()->value().codeIDs, idsOf({u"One"_s, u"Three"_s}));
}

TEST_F(QuerySheetTest, ReturnRunsFromTheFieldAndFromCancelToo)
{
    library.makeCodes({u"One"_s});
    for (const QString &name : {u"textFilter"_s, u"cancel"_s}) {
        open();
        click(0);
        find<QWidget>(name).setFocus(Qt::TabFocusReason);
        press(Qt::Key_Return);
        EXPECT_EQ(sheet(), nullptr);
        EXPECT_TRUE(library.store.activeQuery().get().has_value()) << name.toStdString();
        library.store.selectProject(library.store.project()->value().id);
    }
}

TEST_F(QuerySheetTest, EscapeAndCancelRunNothingAndTheNextSheetStartsAfresh)
{
    library.makeCodes({u"One"_s, u"Two"_s});
    open();
    click(0);
    click(1);
    chooseMode(1);
    QTest::keyClicks(&find<QLineEdit>(u"textFilter"_s), u"words"_s);
    press(Qt::Key_Escape);
    EXPECT_EQ(sheet(), nullptr);
    open();
    EXPECT_EQ(chosen(), QList<int>());
    EXPECT_EQ(mode().currentIndex(), 0);
    EXPECT_EQ(find<QLineEdit>(u"textFilter"_s).text(), QString());
    click(0);
    click(u"cancel"_s);
    EXPECT_FALSE(library.store.activeQuery().get().has_value());
}

TEST_F(QuerySheetTest, TwoFastClicksAreTwoClicks)
{
    library.makeCodes({u"One"_s});
    open();
    click(0);
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, placeOf(0));
    EXPECT_EQ(chosen(), QList{0}); // on, off and on again
    QTest::mouseClick(list().viewport(), Qt::RightButton, {}, placeOf(0));
    EXPECT_EQ(chosen(), QList{0});
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, {list().viewport()->width() - 3, placeOf(0).y()});
    EXPECT_EQ(chosen(), QList<int>()); // the row is a button all over
}

TEST_F(QuerySheetTest, TabGoesRoundWithinTheSheet)
{
    library.makeCodes({u"One"_s});
    open();
    click(0);
    mode().setFocus(Qt::TabFocusReason);
    EXPECT_EQ(
        tabbedThrough(5), (QStringList{u"textFilter"_s, u"codeChoices"_s, u"cancel"_s, u"runQuery"_s, u"queryMode"_s}));
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
    EXPECT_EQ(row(0).data().toString(), u"Second"_s);
    EXPECT_EQ(chosen(), QList{0});
}

TEST_F(QuerySheetTest, EachLevelIsIndentedAndTheDeepestStillShows)
{
    QStringList names;
    for (int level = 0; level < 60; ++level)
        names.append(u"Level %1"_s.arg(level));
    const QList<Code> codes = library.makeCodes(names);
    for (int level = 1; level < 60; ++level)
        library.store.nestCode(codes[level].id, codes[level - 1].id);
    open();
    EXPECT_LT(paintedFrom(1), paintedFrom(2));
    EXPECT_LT(paintedFrom(2), paintedFrom(3));
    list().scrollToBottom();
    EXPECT_LT(paintedFrom(59), list().width() / 2 + 40);
    list().scrollToTop();
    QApplication::setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(paintedFrom(1), paintedFrom(2)) << "the counts, at the left";
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(QuerySheetTest, ManyCodesScrollWithinTheSheet)
{
    library.makeCodes({u"One"_s, u"Two"_s, u"Three"_s});
    open();
    EXPECT_EQ(list().verticalScrollBar()->maximum(), 0);
    const int rowHeight = list().visualRect(row(1)).height();
    for (int number = 0; number < 40; ++number)
        library.makeCodes({u"Code %1"_s.arg(number)});
    QApplication::processEvents();
    EXPECT_LT(list().height(), 12 * rowHeight);
    list().scrollToBottom();
    EXPECT_TRUE(list().viewport()->rect().contains(list().visualRect(row(42))));
}

TEST_F(QuerySheetTest, ScreenReadersHearNamesCountsAndMarks)
{
    const Document document = library.paste(u"A"_s, u"some words"_s);
    library.makeCodes({u"One"_s, u"Two"_s});
    library.store.assignCode(library.code(u"Two"_s), document, {0, 4});
    open();
    click(1);
    QAccessibleInterface *choices = QAccessible::queryAccessibleInterface(&list());
    ASSERT_NE(choices, nullptr);
    EXPECT_EQ(choices->text(QAccessible::Name), u"Codes"_s);
    ASSERT_EQ(choices->childCount(), 2);
    EXPECT_EQ(choices->child(1)->text(QAccessible::Name), u"Two, 1 coded passages"_s);
    EXPECT_TRUE(choices->child(1)->state().checkable);
    EXPECT_TRUE(choices->child(1)->state().checked);
    EXPECT_FALSE(choices->child(0)->state().checked);
}
