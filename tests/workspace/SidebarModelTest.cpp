#include "workspace/sidebar/SidebarModel.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Rows as they come from a tree that is changed anywhere: few identities, in any order, with details that vary.
SidebarRows randomRows(QRandomGenerator &random, const QList<QUuid> &identities)
{
    SidebarRows rows;
    for (const QUuid &id : identities) {
        SidebarRow row;
        row.kind = SidebarRow::Kind::code;
        row.id = id;
        row.text = QString::number(random.bounded(3));
        row.depth = random.bounded(2);
        if (random.bounded(4) > 0)
            rows.insert(rows.end() - (random.bounded(4) > 0 ? 0 : random.bounded(int(rows.size()) + 1)), row);
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
    QRandomGenerator random(20261124);
    QList<QUuid> identities(8);
    std::ranges::generate(identities, &QUuid::createUuid);
    SidebarModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    QSet<int> announced;
    QObject::connect(
        &model, &SidebarModel::dataChanged, &model, [&](const QModelIndex &first, const QModelIndex &last) {
            for (int number = first.row(); number <= last.row(); ++number)
                announced.insert(number);
        });
    SidebarRows before;
    for (int round = 0; round < 500; ++round) {
        std::vector<QPersistentModelIndex> indexes;
        for (int number = 0; number < model.rowCount(); ++number)
            indexes.emplace_back(model.index(number));
        const SidebarRows rows = randomRows(random, identities);
        model.show(rows);
        ASSERT_EQ(shownBy(model), rows) << "round " << round;
        for (size_t number = 0; number < indexes.size(); ++number) {
            if (!indexes[number].isValid())
                continue;
            const SidebarRow now = SidebarModel::rowAt(indexes[number]);
            ASSERT_EQ(now.id, before[number].id) << "round " << round;
            ASSERT_TRUE(now == before[number] || announced.contains(indexes[number].row())) << "round " << round;
        }
        announced.clear();
        model.show(rows);
        ASSERT_TRUE(announced.isEmpty()) << "nothing is new";
        before = rows;
    }
}
