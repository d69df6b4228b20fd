#include "workspace/results/QueryResultsView.h"

#include "ShownView.h"
#include "kit/controls/ElidedLabel.h"
#include "kit/lists/SnippetLayout.h"
#include "kit/lists/SnippetRowDelegate.h"
#include "kit/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace {

/// With two codes that overlap on "two".
class QueryResults : public ShownView<QueryResultsView> {
protected:
    QueryResults()
    {
        library.makeCodes({u"Trust"_s, u"Doubt"_s});
        notes = library.paste(u"Notes"_s, u"one two three four five six seven"_s);
        assign(u"Trust"_s, 0, 7);
        assign(u"Doubt"_s, 4, 9);
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
    [[nodiscard]] RowList &list() const { return find<RowList>(u"resultList"_s); }
    [[nodiscard]] QString count() const { return find<ElidedLabel>(u"passageCount"_s).text(); }
    [[nodiscard]] QuerySummary &summary() const { return find<QuerySummary>(u"querySummary"_s); }
    [[nodiscard]] QList<QColor> dots(int number) const
    {
        return row(list(), number).data(SnippetRowDelegate::dotColorsRole).value<QList<QColor>>();
    }
    [[nodiscard]] QColor colorOf(const QString &code) const { return Theme::codeColor(library.code(code).colorHex); }
    /// Whether that row's last line shows a pixel of exactly that colour.
    [[nodiscard]] bool showsDot(int number, const QColor &color) const
    {
        const QImage picture = list().viewport()->grab(list().visualRect(row(list(), number))).toImage();
        for (int y = picture.height() - 26; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixelColor(x, y).rgb() == color.rgb())
                    return true;
            }
        }
        return false;
    }

    Document notes;
};

} // namespace

TEST_F(QueryResults, SaysHowManyPassagesMatchAndWhatToTryWithoutAny)
{
    open();
    for (const auto &[textFilter, said] :
        {std::pair{u"nowhere"_s, u"0 passages"_s}, {u"three"_s, u"1 passage"_s}, {u"two"_s, u"2 passages"_s}}) {
        runAny({u"Trust"_s, u"Doubt"_s}, textFilter);
        EXPECT_EQ(count(), said);
        EXPECT_EQ(list().isVisible(), textFilter != u"nowhere"_s);
        EXPECT_EQ(showsPage(u"noMatches"_s), textFilter == u"nowhere"_s);
    }
    EXPECT_EQ(textsOf(u"noMatches"_s).first(), u"No Matches"_s);
}

TEST_F(QueryResults, AClickAndReturnOpenThePassageAndTheListStays)
{
    const Document other = library.paste(u"Other"_s, u"another text"_s);
    library.store.assignCode(library.code(u"Trust"_s), other, {0, 7});
    open();
    runAny({u"Trust"_s});
    ASSERT_EQ(list().model()->rowCount(), 2);
    click(list(), 1);
    EXPECT_EQ(library.store.selectedDocumentID().get(), notes.id);
    EXPECT_EQ(revealedRange(), (TextRange{0, 7}));
    EXPECT_EQ(library.store.sidebarSelection().get(), SidebarSelection(QuerySelection{}));
    QTest::keyClick(&list(), Qt::Key_Up);
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(library.store.selectedDocumentID().get(), other.id);
    pressButton(u"All Documents"_s);
    EXPECT_EQ(library.store.sidebarSelection().get(),
        SidebarSelection(ProjectSelection{library.store.project()->value().id}));
}

TEST_F(QueryResults, ARowHasADotForEachCodeItStandsFor)
{
    open();
    runAny({u"Trust"_s, u"Doubt"_s});
    EXPECT_EQ(dots(0), QList{colorOf(u"Trust"_s)});
    EXPECT_EQ(dots(1), QList{colorOf(u"Doubt"_s)});
    EXPECT_FALSE(showsDot(0, colorOf(u"Doubt"_s)));
    run(QuerySpec::Mode::all, {u"Doubt"_s, u"Trust"_s});
    EXPECT_EQ(row(list(), 0).data().toString(), u"two"_s);
    EXPECT_EQ(dots(0), (QList{colorOf(u"Doubt"_s), colorOf(u"Trust"_s)}));
    EXPECT_TRUE(showsDot(0, colorOf(u"Trust"_s)) && showsDot(0, colorOf(u"Doubt"_s)));
    EXPECT_EQ(spoken(list(), 0), u"two, Notes, Doubt, Trust"_s);
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
    EXPECT_EQ(dots(0).last(), ThemeColors::accent);
    library.store.deleteCode(library.code(u"Faith"_s));
    EXPECT_EQ(dots(0), (QList{ThemeColors::accent, ThemeColors::accent}));
    EXPECT_EQ(count(), u"1 passage"_s);
    EXPECT_EQ(spoken(list(), 0), u"two, Notes, Doubt"_s);
}

TEST_F(QueryResults, ALongSummaryIsCutOffBehindTwoLines)
{
    open();
    runAny({u"Trust"_s});
    const int oneLine = summary().height();
    for (const int length : {30, 600'000}) {
        runAny({u"Trust"_s, u"Doubt"_s}, QString(length, u'W'));
        EXPECT_EQ(summary().height(), 2 * oneLine);
        EXPECT_GT(summary().accessibleName().size(), length);
    }
}

TEST_F(QueryResults, TheSummaryIsAsHighAsItsTextInAnyWidth)
{
    library.makeCodes({u"any mention"_s});
    open();
    for (const int length : {0, 12, 30, 600'000}) {
        runAny({u"Trust"_s, u"any mention"_s}, QString(length, u'W'));
        EXPECT_GE(summary().accessibleName().size(), length);
        for (int width = 240; width <= 380; width += 7) {
            view->resize(width, 500);
            QApplication::processEvents();
            const SnippetLayout wanted(summary().accessibleName(),
                {.font = summary().font(), .width = width - 36, .lineHeight = 17, .maxLineCount = 2});
            ASSERT_EQ(summary().width(), width - 36);
            ASSERT_EQ(summary().height(), wanted.height()) << "width " << width << ", length " << length;
        }
    }
}
