#include "workspace/sidebar/SidebarModel.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace {

/// Rows as they come from a tree that is changed anywhere: few identities, in any order, with details that vary.
SidebarRows randomRows(QRandomGenerator &random, const QList<QUuid> &identities)
{
    SidebarRows rows;
    for (const QUuid &id : identities) {
        if (random.bounded(4) == 0)
            continue;
        SidebarRow row;
        row.kind = SidebarRow::Kind::code;
        row.id = id;
        row.text = QString::number(random.bounded(3));
        row.depth = random.bounded(2);
        rows.push_back(row);
    }
    const auto moves = random.bounded(3);
    for (int move = 0; move < moves && !rows.empty(); ++move) {
        const auto first = rows.begin() + random.bounded(int(rows.size()));
        std::rotate(first, first + 1, rows.end());
    }
    return rows;
}

SidebarRows shownBy(const SidebarModel &model)
{
    SidebarRows rows;
    for (int number = 0; number < model.rowCount(); ++number)
        rows.push_back(SidebarModel::rowAt(model.index(number)));
    return rows;
}

} // namespace

TEST(SidebarModel, ShowsAnyRowsAfterAnyOthersAndKeepsIndexesOnTheirLines)
{
    constexpr int rounds = 500;
    QRandomGenerator random(20261124);
    QList<QUuid> identities;
    for (int number = 0; number < 8; ++number)
        identities.append(QUuid::createUuid());
    SidebarModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    SidebarRows before;
    for (int round = 0; round < rounds; ++round) {
        std::vector<QPersistentModelIndex> indexes;
        for (int number = 0; number < model.rowCount(); ++number)
            indexes.emplace_back(model.index(number));
        const SidebarRows rows = randomRows(random, identities);
        model.show(rows);
        ASSERT_EQ(shownBy(model), rows) << "round " << round;
        for (size_t number = 0; number < indexes.size(); ++number) {
            if (!indexes[number].isValid())
                continue;
            ASSERT_EQ(SidebarModel::rowAt(indexes[number]).id, before[number].id) << "round " << round;
        }
        before = rows;
    }
}

TEST(SidebarModel, AnnouncesNoMoreThanWhatChanged)
{
    QRandomGenerator random(7);
    QList<QUuid> identities;
    for (int number = 0; number < 50; ++number)
        identities.append(QUuid::createUuid());
    SidebarRows rows = randomRows(random, identities);
    SidebarModel model;
    model.show(rows);
    std::vector<std::pair<int, int>> changes;
    QObject::connect(&model, &SidebarModel::dataChanged, &model,
        [&](const QModelIndex &first, const QModelIndex &last) { changes.emplace_back(first.row(), last.row()); });
    model.show(rows);
    EXPECT_TRUE(changes.empty());
    rows[7].count = 12;
    rows[9].text = u"renamed"_s;
    model.show(rows);
    EXPECT_EQ(changes, (std::vector<std::pair<int, int>>{{7, 9}}));

    int inserted = 0;
    int removed = 0;
    QObject::connect(&model, &SidebarModel::rowsInserted, &model,
        [&](const QModelIndex &, int first, int last) { inserted += last - first + 1; });
    QObject::connect(&model, &SidebarModel::rowsRemoved, &model,
        [&](const QModelIndex &, int first, int last) { removed += last - first + 1; });
    SidebarRow added;
    added.kind = SidebarRow::Kind::code;
    added.id = QUuid::createUuid();
    rows.insert(rows.begin() + 5, added);
    model.show(rows);
    rows.erase(rows.begin() + 20, rows.begin() + 22);
    model.show(rows);
    EXPECT_EQ(inserted, 1);
    EXPECT_EQ(removed, 2);
}
