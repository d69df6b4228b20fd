#include "kit/lists/SnippetList.h"

#include "kit/theme/ThemedTest.h"

#include <QRandomGenerator>
#include <QScrollBar>
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
    Snippets() : list(new SnippetList(u"Rows"_s, 70, &m_window))
    {
        list->resize(285, 400);
        list->setItemDelegate(&delegate);
        list->setModel(&model);
        showWindow();
    }
    ~Snippets() override { delete list; }

    [[nodiscard]] QStringList randomHeights(int count)
    {
        QStringList heights(count);
        std::ranges::generate(heights, [&] { return QString::number(random.bounded(20, 130)); });
        return heights;
    }
    [[nodiscard]] QRect rectOf(int row) const { return list->visualRect(model.index(row)); }
    [[nodiscard]] int firstInView() const { return list->indexAt({5, 0}).row(); }
    [[nodiscard]] int lastInView() const
    {
        const QModelIndex index = list->indexAt({5, list->viewport()->height() - 1});
        return index.isValid() ? index.row() : model.rowCount() - 1;
    }
    /// What is in view lies there without gaps, each row as high as the delegate wants it.
    void expectTrueRows() const
    {
        const int extra = list->viewport()->width() < 200 ? 30 : 0;
        for (int row = firstInView(); row <= lastInView(); ++row) {
            ASSERT_EQ(rectOf(row).height(), model.index(row).data().toInt() + extra) << "row " << row;
            if (row > firstInView()) {
                ASSERT_EQ(rectOf(row).top(), rectOf(row - 1).bottom() + 1) << "row " << row;
            }
            ASSERT_EQ(list->indexAt((rectOf(row) & list->viewport()->rect()).center()).row(), row);
        }
    }

    QRandomGenerator random{20260301};
    HeightDelegate delegate;
    QStringListModel model;
    SnippetList *list;
};

} // namespace

TEST_F(Snippets, OpeningALongListMeasuresOnlyWhatIsSeen)
{
    model.setStringList(QStringList(1'000'000, u"60"_s));
    QApplication::processEvents();
    EXPECT_LT(delegate.asked, 30);
    list->verticalScrollBar()->setValue(list->verticalScrollBar()->maximum() / 2);
    list->viewport()->grab();
    EXPECT_LT(delegate.asked, 60);
    expectTrueRows();
}

TEST_F(Snippets, RowsAreTrueWhereverTheListIsScrolled)
{
    model.setStringList(randomHeights(500));
    QScrollBar &bar = *list->verticalScrollBar();
    for (int round = 0; round < 400 && !HasFailure(); ++round) {
        const int row = random.bounded(500);
        const int kind = random.bounded(6);
        if (kind == 0)
            bar.setValue(bar.maximum() / 499 * row);
        if (kind == 1) {
            bar.setValue(bar.maximum());
            EXPECT_EQ(rectOf(499).bottom(), list->viewport()->height() - 1);
        }
        if (kind == 2) {
            bar.setValue(0);
            EXPECT_EQ(rectOf(0).top(), 0);
        }
        if (kind == 3) {
            list->scrollTo(model.index(row));
            EXPECT_TRUE(list->viewport()->rect().contains(rectOf(row))) << "row " << row;
        }
        if (kind == 4) {
            list->scrollTo(model.index(row), QAbstractItemView::PositionAtTop);
            EXPECT_TRUE(rectOf(row).top() == 0 || bar.value() == bar.maximum()) << "row " << row;
        }
        if (kind == 5) {
            const int first = firstInView();
            list->resize(list->width() == 285 ? 180 : 285, 400);
            EXPECT_TRUE(firstInView() == first || bar.value() == bar.maximum()) << "row " << first;
        }
        expectTrueRows();
    }
}

TEST_F(Snippets, ScrollingUpIntoUnmeasuredRowsMovesByJustTheStep)
{
    model.setStringList(randomHeights(500));
    list->scrollTo(model.index(300), QAbstractItemView::PositionAtTop);
    constexpr int step = 13;
    for (int round = 0; round < 200; ++round) {
        const int row = lastInView() - 1;
        const int top = rectOf(row).top();
        list->verticalScrollBar()->setValue(list->verticalScrollBar()->value() - step);
        ASSERT_EQ(rectOf(row).top(), top + step) << "round " << round;
    }
}

TEST_F(Snippets, AResetKeepsWhatIsInView)
{
    QStringList heights = randomHeights(300);
    model.setStringList(heights);
    list->verticalScrollBar()->setValue(9000);
    const int first = firstInView();
    const QRect rect = rectOf(first);
    heights.append(randomHeights(40));
    model.setStringList(heights);
    EXPECT_EQ(firstInView(), first);
    EXPECT_EQ(rectOf(first), rect);
    heights.resize(first - 20);
    model.setStringList(heights);
    EXPECT_EQ(rectOf(first - 21).bottom(), list->viewport()->height() - 1);
    expectTrueRows();
    model.setStringList({});
    EXPECT_FALSE(list->indexAt({5, 5}).isValid());
    EXPECT_EQ(list->verticalScrollBar()->maximum(), 0);
    list->viewport()->grab();
}

TEST_F(Snippets, KeysMoveThroughTheRows)
{
    model.setStringList(randomHeights(200));
    list->setFocus();
    const std::tuple<Qt::Key, int, int> places[]{{Qt::Key_End, 199, 199}, {Qt::Key_Down, 199, 199},
        {Qt::Key_Up, 198, 198}, {Qt::Key_PageUp, 178, 195}, {Qt::Key_Home, 0, 0}, {Qt::Key_Up, 0, 0},
        {Qt::Key_PageDown, 3, 20}};
    for (const auto &[key, first, last] : places) {
        QTest::keyClick(list, key);
        const int row = list->currentIndex().row();
        EXPECT_TRUE(row >= first && row <= last) << row;
        EXPECT_TRUE(list->viewport()->rect().contains(rectOf(row))) << row;
    }
    EXPECT_FALSE(list->selectionModel()->hasSelection());
}
