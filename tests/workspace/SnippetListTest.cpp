#include "workspace/lists/SnippetList.h"

#include "workspace/theme/ThemedTest.h"

#include <QAbstractListModel>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTest>

#include <numeric>
#include <random>

using namespace Qt::StringLiterals;

namespace {

class Heights final : public QAbstractListModel {
public:
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_heights.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        return role == Qt::DisplayRole ? QVariant(m_heights.at(index.row())) : QVariant();
    }
    void set(const QList<int> &heights)
    {
        beginResetModel();
        m_heights = heights;
        endResetModel();
    }

private:
    QList<int> m_heights;
};

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

    [[nodiscard]] QList<int> randomHeights(int count)
    {
        QList<int> heights(count);
        std::uniform_int_distribution<int> height(20, 130);
        std::ranges::generate(heights, [&] { return height(random); });
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

    std::mt19937 random{20260301};
    HeightDelegate delegate;
    Heights model;
    SnippetList *list;
};

} // namespace

TEST_F(Snippets, OpeningALongListMeasuresOnlyWhatIsSeen)
{
    model.set(QList<int>(1'000'000, 60));
    QApplication::processEvents();
    EXPECT_LT(delegate.asked, 30);
    list->verticalScrollBar()->setValue(list->verticalScrollBar()->maximum() / 2);
    list->viewport()->grab();
    EXPECT_LT(delegate.asked, 60);
    expectTrueRows();
}

TEST_F(Snippets, RowsAreTrueWhereverTheListIsScrolled)
{
    model.set(randomHeights(500));
    std::uniform_int_distribution<int> kinds(0, 5);
    std::uniform_int_distribution<int> rows(0, 499);
    for (int round = 0; round < 400; ++round) {
        QScrollBar &bar = *list->verticalScrollBar();
        const int row = rows(random);
        switch (kinds(random)) {
        case 0:
            bar.setValue(bar.maximum() / 499 * row);
            break;
        case 1:
            bar.setValue(bar.maximum());
            EXPECT_EQ(rectOf(499).bottom(), list->viewport()->height() - 1);
            break;
        case 2:
            bar.setValue(0);
            EXPECT_EQ(rectOf(0).top(), 0);
            break;
        case 3:
            list->scrollTo(model.index(row));
            EXPECT_TRUE(list->viewport()->rect().contains(rectOf(row))) << "row " << row;
            break;
        case 4:
            list->scrollTo(model.index(row), QAbstractItemView::PositionAtTop);
            EXPECT_TRUE(rectOf(row).top() == 0 || bar.value() == bar.maximum()) << "row " << row;
            break;
        default: {
            const int width = list->width() == 285 ? 180 : 285;
            const int first = firstInView();
            list->resize(width, 400);
            EXPECT_TRUE(firstInView() == first || bar.value() == bar.maximum()) << "row " << first;
        }
        }
        expectTrueRows();
        if (HasFailure())
            return;
    }
}

TEST_F(Snippets, ScrollingUpIntoUnmeasuredRowsMovesByJustTheStep)
{
    model.set(randomHeights(500));
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
    QList<int> heights = randomHeights(300);
    model.set(heights);
    list->verticalScrollBar()->setValue(9000);
    const int first = firstInView();
    const QRect rect = rectOf(first);
    heights.append(randomHeights(40));
    model.set(heights);
    EXPECT_EQ(firstInView(), first);
    EXPECT_EQ(rectOf(first), rect);
    heights.resize(first - 20);
    model.set(heights);
    EXPECT_EQ(rectOf(first - 21).bottom(), list->viewport()->height() - 1);
    expectTrueRows();
    model.set({});
    EXPECT_FALSE(list->indexAt({5, 5}).isValid());
    EXPECT_EQ(list->verticalScrollBar()->maximum(), 0);
    list->viewport()->grab();
}

TEST_F(Snippets, KeysMoveThroughTheRows)
{
    model.set(randomHeights(200));
    list->setFocus();
    const auto press = [&](Qt::Key key) {
        QTest::keyClick(list, key);
        EXPECT_TRUE(list->viewport()->rect().contains(rectOf(list->currentIndex().row()))) << key;
        return list->currentIndex().row();
    };
    EXPECT_EQ(press(Qt::Key_End), 199);
    EXPECT_EQ(press(Qt::Key_Down), 199);
    EXPECT_EQ(press(Qt::Key_Up), 198);
    const int pageUp = press(Qt::Key_PageUp);
    EXPECT_LT(pageUp, 198 - 2);
    EXPECT_GT(pageUp, 198 - 20);
    EXPECT_EQ(press(Qt::Key_Home), 0);
    EXPECT_EQ(press(Qt::Key_Up), 0);
    EXPECT_GT(press(Qt::Key_PageDown), 2);
    EXPECT_FALSE(list->selectionModel()->hasSelection());
}
