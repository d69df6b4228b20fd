#include "kit/lists/SnippetLayout.h"
#include "kit/lists/SnippetList.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/ThemedTest.h"

#include <QRandomGenerator>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStringListModel>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace {

/// Rows as high as their number says, and higher in a narrow list. Counts how often it is asked.
class HeightDelegate final : public QStyledItemDelegate {
public:
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        ++asked;
        return {option.rect.width(), index.data().toInt() + (option.rect.width() < 200 ? 30 : 0)};
    }
    void paint(QPainter *, const QStyleOptionViewItem &, const QModelIndex &) const override { }

    mutable int asked = 0;
};

class Snippets : public ThemedTest {
protected:
    Snippets()
    {
        list.resize(285, 400);
        list.setItemDelegate(&delegate);
        list.setModel(&model);
        showWindow();
    }
    [[nodiscard]] QStringList randomHeights(int count)
    {
        QStringList heights(count);
        std::ranges::generate(heights, [this] { return QString::number(random.bounded(20, 130)); });
        return heights;
    }
    [[nodiscard]] QRect rectOf(int row) const { return list.visualRect(model.index(row)); }
    [[nodiscard]] int rowAt(int y) const { return list.indexAt({5, y}).row(); }
    /// Rows in view leave no gaps, and each is as high as the delegate wants it.
    void expectTrueRows() const
    {
        const int extra = list.viewport()->width() < 200 ? 30 : 0;
        int bottom = rectOf(rowAt(0)).top() - 1;
        for (int row = rowAt(0); row < model.rowCount() && bottom < list.viewport()->height() - 1; ++row) {
            const QRect rect = rectOf(row);
            ASSERT_EQ(rect.height(), model.index(row).data().toInt() + extra) << "row " << row;
            ASSERT_EQ(rect.top(), bottom + 1) << "row " << row;
            ASSERT_EQ(rowAt((rect & list.viewport()->rect()).center().y()), row);
            bottom = rect.bottom();
        }
    }

    QRandomGenerator random{20260301};
    QStringListModel model;
    HeightDelegate delegate;
    SnippetList list{u"Rows"_s, 70, &m_window};
    QScrollBar &bar = *list.verticalScrollBar();
};

} // namespace

TEST_F(Snippets, OpeningALongListMeasuresOnlyWhatIsSeen)
{
    model.setStringList(QStringList(1'000'000, u"60"_s));
    QApplication::processEvents();
    EXPECT_LT(delegate.asked, 30);
    bar.setValue(bar.maximum() / 2);
    EXPECT_LT(delegate.asked, 60);
    expectTrueRows();
    model.setStringList(QStringList(3, u"60"_s));
    expectTrueRows();
    EXPECT_EQ(bar.maximum(), 0);
    EXPECT_EQ(rowAt(180), -1) << "below the last row";
}

TEST_F(Snippets, RowsAreTrueWhereverTheListIsScrolled)
{
    model.setStringList(randomHeights(500));
    int first = 0; // of the rows in view before the list is scrolled
    int top = 0;
    const std::function<void(int)> ways[]{[&](int row) { bar.setValue(bar.maximum() / 499 * row); },
        [&](int) {
            bar.setValue(bar.maximum());
            EXPECT_EQ(bar.value(), bar.maximum());
            EXPECT_EQ(rectOf(model.rowCount() - 1).bottom(), list.viewport()->height() - 1);
        },
        [&](int row) {
            list.scrollTo(model.index(row));
            EXPECT_TRUE(list.viewport()->rect().contains(rectOf(row)));
        },
        [&](int row) {
            list.scrollTo(model.index(row), QAbstractItemView::PositionAtTop);
            EXPECT_TRUE(rectOf(row).top() == 0 || bar.value() == bar.maximum());
        },
        [&](int) {
            list.resize(list.width() == 285 ? 180 : 285, 400);
            EXPECT_TRUE(rowAt(0) == first || bar.value() == bar.maximum());
        },
        [&](int) { // up into rows that weren't measured before
            const int step = std::min(13, bar.value());
            bar.setValue(bar.value() - step);
            EXPECT_EQ(rectOf(first + 1).top(), top + rectOf(first).height() + step);
        },
        [&](int) { // rows that come and go at the end leave in place what is in view
            model.setStringList(
                model.rowCount() == 500 ? model.stringList() + randomHeights(40) : model.stringList().first(500));
            EXPECT_TRUE(rectOf(first).top() == top || bar.value() == bar.maximum());
        }};
    for (int round = 0; round < 600 && !HasFailure(); ++round) {
        const int way = random.bounded(int(std::size(ways)));
        SCOPED_TRACE(testing::Message() << "round " << round << ", way " << way);
        first = rowAt(0);
        top = rectOf(first).top();
        ways[way](random.bounded(500));
        expectTrueRows();
    }
}

TEST_F(Snippets, ClicksReturnAndSpaceActAndKeysMove)
{
    model.setStringList(randomHeights(200));
    QSignalSpy acted(&list, &RowList::acted);
    const auto actedRow = [&] { return acted.isEmpty() ? -1 : acted.takeFirst().first().toModelIndex().row(); };
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, rectOf(2).center());
    EXPECT_EQ(actedRow(), 2);
    for (const auto &[key, row] : {std::pair(Qt::Key_Return, 3), {Qt::Key_Enter, 4}, {Qt::Key_Space, 5}}) {
        QTest::keyClick(&list, Qt::Key_Down);
        EXPECT_EQ(actedRow(), -1) << "moving isn't acting";
        QTest::keyClick(&list, key);
        EXPECT_EQ(actedRow(), row);
    }
    for (const auto &[key, first, last] : {std::tuple(Qt::Key_End, 199, 199), {Qt::Key_Down, 199, 199},
             {Qt::Key_PageUp, 178, 196}, {Qt::Key_Home, 0, 0}, {Qt::Key_Up, 0, 0}, {Qt::Key_PageDown, 3, 20}}) {
        QTest::keyClick(&list, key);
        const int row = list.currentIndex().row();
        EXPECT_TRUE(row >= first && row <= last) << row;
        EXPECT_TRUE(list.viewport()->rect().contains(rectOf(row))) << row;
    }
    bar.setValue(0);
    QTest::mouseClick(list.viewport(), Qt::RightButton, {}, rectOf(0).center());
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, rectOf(1).center());
    QMouseEvent move(QEvent::MouseMove, rectOf(2).center(), {}, {}, Qt::LeftButton, {});
    QApplication::sendEvent(list.viewport(), &move);
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, rectOf(2).center());
    EXPECT_EQ(list.currentIndex().row(), 1) << "what the mouse passes isn't selected";
    EXPECT_EQ(actedRow(), -1);
}

TEST_F(ThemedTest, SnippetsTakeTheLinesTheyNeedUpToThree)
{
    const SnippetLayout::Style style{.font = Fonts::body(), .width = 249};
    const std::tuple<const char *, QString, int, bool> passages[]{
        {"ends in the third line", u"ten letter "_s.repeated(8) + u"end"_s, 3, false},
        {"goes on", u"ten letter "_s.repeated(20), 3, true}, {"one endless word", u"x"_s.repeated(1000), 3, true},
        {"a book", u"many words "_s.repeated(1'000'000), 3, true},
        {"line breaks are blanks", u"a\nb\r\nc\u2028d\u2029e\vf"_s, 1, false},
        {"a surrogate pair at the limit", u"😀"_s.repeated(2000), 3, true},
        {"marks without width", u"a"_s + u"\u0301"_s.repeated(5000), 1, true}};
    for (const auto &[name, text, lineCount, isCut] : passages) {
        const SnippetLayout snippet(text, style);
        EXPECT_EQ(snippet.lineCount(), lineCount) << name;
        EXPECT_EQ(snippet.isCut(), isCut) << name;
        EXPECT_EQ(snippet.text().endsWith(u'…'), isCut) << name;
        EXPECT_EQ(snippet.height(), lineCount * SnippetLayout::lineHeightOf(style)) << name;
    }
}
