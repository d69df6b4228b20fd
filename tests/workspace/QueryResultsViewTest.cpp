#include "workspace/results/QueryResultsView.h"

#include "support/TestLibrary.h"
#include "workspace/controls/ElidedLabel.h"
#include "workspace/controls/Paragraph.h"
#include "workspace/lists/RowList.h"
#include "workspace/lists/SnippetRowDelegate.h"
#include "workspace/results/QuerySummary.h"
#include "workspace/theme/CodeColor.h"
#include "workspace/theme/ThemedTest.h"

#include <QPushButton>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The real view over the real store, with two codes that overlap on "two".
class QueryResults : public ThemedTest {
protected:
    QueryResults()
    {
        library.makeCodes({u"Trust"_s, u"Doubt"_s});
        notes = library.paste(u"Notes"_s, u"one two three four five six seven"_s);
        assign(u"Trust"_s, 0, 7);
        assign(u"Doubt"_s, 4, 9);
    }
    ~QueryResults() override { delete view; } // before the store
    void open()
    {
        view = new QueryResultsView(library.store, &m_window);
        view->resize(285, 500);
        showWindow();
        QApplication::processEvents();
    }
    void assign(const QString &code, qint64 start, qint64 length)
    {
        library.store.assignCode(library.code(code), notes, {start, length});
    }
    void run(QuerySpec::Mode mode, const QStringList &codes, const QString &textFilter = {})
    {
        QuerySpec spec{.codeIDs = {}, .mode = mode, .textFilter = textFilter};
        for (const QString &code : codes)
            spec.codeIDs.append(library.code(code).id);
        library.store.runQuery(spec);
        QApplication::processEvents();
    }
    void runAny(const QStringList &codes, const QString &textFilter = {})
    {
        run(QuerySpec::Mode::any, codes, textFilter);
    }
    [[nodiscard]] RowList &list() const { return *view->findChild<RowList *>(u"resultList"_s); }
    [[nodiscard]] QString count() const { return view->findChild<ElidedLabel *>(u"passageCount"_s)->text(); }
    [[nodiscard]] QuerySummary &summary() const { return *view->findChild<QuerySummary *>(u"querySummary"_s); }
    [[nodiscard]] QWidget &noMatches() const { return *view->findChild<QWidget *>(u"noMatches"_s); }
    [[nodiscard]] QModelIndex row(int number) const { return list().model()->index(number, 0); }
    [[nodiscard]] QList<QColor> dots(int number) const
    {
        return row(number).data(SnippetRowDelegate::dotColorsRole).value<QList<QColor>>();
    }
    [[nodiscard]] QColor colorOf(const QString &code) const { return CodeColor::orAccent(library.code(code).colorHex); }
    /// Whether that row's last line shows a pixel of exactly that colour.
    [[nodiscard]] bool showsDot(int number, const QColor &color) const
    {
        const QImage picture = list().viewport()->grab(list().visualRect(row(number))).toImage();
        for (int y = picture.height() - 26; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixelColor(x, y).rgb() == color.rgb())
                    return true;
            }
        }
        return false;
    }

    TestLibrary library;
    Document notes;
    QueryResultsView *view = nullptr;
};

struct CountCase {
    const char *name;
    QString textFilter;
    QString count;
    bool hasList;
};
class PassageCount : public QueryResults, public testing::WithParamInterface<CountCase> { };

} // namespace

TEST_P(PassageCount, IsSaidInWords)
{
    open();
    runAny({u"Trust"_s, u"Doubt"_s}, GetParam().textFilter);
    EXPECT_EQ(count(), GetParam().count);
    EXPECT_EQ(list().isVisible(), GetParam().hasList);
    EXPECT_EQ(noMatches().isVisible(), !GetParam().hasList);
}

INSTANTIATE_TEST_SUITE_P(Filters, PassageCount,
    testing::Values(CountCase{"none_is_many", u"nowhere"_s, u"0 passages"_s, false},
        CountCase{"one", u"three"_s, u"1 passage"_s, true}, CountCase{"two", u"two"_s, u"2 passages"_s, true}),
    rowName);

TEST_F(QueryResults, WithoutMatchesItSaysWhatToTry)
{
    open();
    runAny({u"Trust"_s}, u"nowhere"_s);
    QStringList texts;
    for (const auto *paragraph : noMatches().findChildren<Paragraph *>())
        texts.append(paragraph->accessibleName());
    EXPECT_EQ(texts,
        (QStringList{u"No Matches"_s,
            u"No passages match this query.\nTry “Any of the codes”, fewer codes, or a different filter."_s}));
}

TEST_F(QueryResults, AClickAndReturnOpenThePassageAndTheListStays)
{
    const Document other = library.paste(u"Other"_s, u"another text"_s);
    library.store.assignCode(library.code(u"Trust"_s), other, {0, 7});
    open();
    runAny({u"Trust"_s});
    ASSERT_EQ(list().model()->rowCount(), 2);
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().visualRect(row(1)).center());
    EXPECT_EQ(library.store.selectedDocumentID().get(), notes.id);
    ASSERT_TRUE(library.store.revealRequest().get().has_value());
    EXPECT_EQ(library.store.revealRequest()->value().range, (TextRange{0, 7}));
    EXPECT_EQ(library.store.sidebarSelection().get(), SidebarSelection(QuerySelection{}));
    QTest::keyClick(&list(), Qt::Key_Up);
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(library.store.selectedDocumentID().get(), other.id);
}

TEST_F(QueryResults, ARowHasADotForEachCodeItStandsFor)
{
    open();
    runAny({u"Trust"_s, u"Doubt"_s});
    EXPECT_EQ(dots(0), QList{colorOf(u"Trust"_s)});
    EXPECT_EQ(dots(1), QList{colorOf(u"Doubt"_s)});
    EXPECT_FALSE(showsDot(0, colorOf(u"Doubt"_s)));
    run(QuerySpec::Mode::all, {u"Doubt"_s, u"Trust"_s});
    EXPECT_EQ(row(0).data().toString(), u"two"_s);
    EXPECT_EQ(dots(0), (QList{colorOf(u"Doubt"_s), colorOf(u"Trust"_s)}));
    EXPECT_TRUE(showsDot(0, colorOf(u"Trust"_s)));
    EXPECT_TRUE(showsDot(0, colorOf(u"Doubt"_s)));
    EXPECT_EQ(row(0).data(Qt::AccessibleTextRole).toString(), u"two, Notes, Doubt, Trust"_s);
}

TEST_F(QueryResults, FollowsItsCodesAndOutlivesThem)
{
    open();
    run(QuerySpec::Mode::all, {u"Trust"_s, u"Doubt"_s});
    EXPECT_EQ(summary().accessibleName(), u"Trust + Doubt · overlapping passages"_s);
    library.store.renameCode(library.code(u"Trust"_s), u"Faith"_s);
    EXPECT_EQ(summary().accessibleName(), u"Faith + Doubt · overlapping passages"_s);
    library.store.setCodeColor(library.code(u"Faith"_s), u"#123456"_s);
    EXPECT_EQ(dots(0).first(), QColor(u"#123456"_s));
    EXPECT_TRUE(showsDot(0, QColor(u"#123456"_s)));
    library.store.setCodeColor(library.code(u"Doubt"_s), u"no colour"_s);
    EXPECT_EQ(dots(0).last(), Theme::accent);
    library.store.deleteCode(library.code(u"Faith"_s));
    EXPECT_EQ(dots(0), (QList{Theme::accent, Theme::accent}));
    EXPECT_EQ(count(), u"1 passage"_s);
    EXPECT_EQ(row(0).data(Qt::AccessibleTextRole).toString(), u"two, Notes, Doubt"_s);
}

TEST_F(QueryResults, ManyDotsLeaveRoomForTheTitle)
{
    QStringList names;
    for (int number = 0; number < 200; ++number)
        names.append(u"Code %1"_s.arg(number));
    for (const Code &code : library.makeCodes(names))
        library.store.assignCode(code, notes, {0, 7});
    library.store.setCodeColor(library.code(names.first()), u"#123456"_s);
    open();
    run(QuerySpec::Mode::all, names);
    EXPECT_EQ(count(), u"1 passage"_s);
    EXPECT_TRUE(showsDot(0, QColor(u"#123456"_s)));
    const QImage picture = list().viewport()->grab(list().visualRect(row(0))).toImage();
    const QRect right(picture.width() - 60, picture.height() - 20, 60, 14);
    library.store.renameDocument(library.document(u"Notes"_s), u"A title that goes on"_s);
    run(QuerySpec::Mode::all, names);
    const QImage titled = list().viewport()->grab(list().visualRect(row(0))).toImage();
    EXPECT_NE(titled.copy(right), picture.copy(right)); // more of the title is seen there
}

TEST_F(QueryResults, ALongSummaryIsCutOffBehindTwoLines)
{
    open();
    runAny({u"Trust"_s});
    const int oneLine = summary().height();
    runAny({u"Trust"_s, u"Doubt"_s}, u"some words that don't fit in"_s);
    EXPECT_EQ(summary().height(), 2 * oneLine);
    runAny({u"Trust"_s, u"Doubt"_s}, u"words "_s.repeated(100'000));
    EXPECT_EQ(summary().height(), 2 * oneLine);
    EXPECT_GT(summary().accessibleName().size(), 500'000);
}

TEST_F(QueryResults, AHiddenViewCatchesUpWhenItIsShown)
{
    open();
    m_window.hide();
    runAny({u"Trust"_s});
    EXPECT_EQ(list().model()->rowCount(), 0);
    m_window.show();
    EXPECT_EQ(list().model()->rowCount(), 1);
    EXPECT_EQ(summary().accessibleName(), u"Trust · any mention"_s);
}

TEST_F(QueryResults, AnotherQuerysListBeginsAtItsTop)
{
    notes = library.paste(u"Long"_s, u"word "_s.repeated(200));
    for (int word = 0; word < 60; ++word)
        assign(u"Trust"_s, word * 5, 4);
    open();
    runAny({u"Trust"_s});
    list().scrollToBottom();
    const int place = list().verticalScrollBar()->value();
    ASSERT_GT(place, 0);
    library.store.renameCode(library.code(u"Doubt"_s), u"Fear"_s);
    EXPECT_EQ(list().verticalScrollBar()->value(), place); // the results are the same
    runAny({u"Trust"_s});
    EXPECT_EQ(list().verticalScrollBar()->value(), 0);
}

TEST_F(QueryResults, TheBackButtonLeadsToTheDocuments)
{
    open();
    runAny({u"Trust"_s});
    auto *back = view->findChild<QPushButton *>(u"allDocuments"_s);
    EXPECT_EQ(back->text(), u"All Documents"_s);
    QTest::mouseClick(back, Qt::LeftButton);
    EXPECT_EQ(library.store.sidebarSelection().get(),
        SidebarSelection(ProjectSelection{library.store.project()->value().id}));
}
