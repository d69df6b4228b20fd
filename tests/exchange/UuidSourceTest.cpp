#include "exchange/UuidSource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

TEST(UuidSource, MakesRandomIdentifiersThatNeverRepeat)
{
    UuidSource first;
    UuidSource second;
    std::set<QByteArray> seen;
    for (int count = 1; count <= 2'000; count += 2) {
        for (UuidSource *source : {&first, &second}) {
            const QUuid id = source->next();
            EXPECT_EQ(id.version(), QUuid::Random);
            EXPECT_EQ(id.variant(), QUuid::DCE);
            seen.insert(id.toRfc4122());
        }
        ASSERT_EQ(seen.size(), size_t(count) + 1);
    }
    for (qsizetype byte = 0; byte < 16; ++byte) { // each byte takes part
        std::set<char> values;
        for (const QByteArray &id : seen)
            values.insert(id[byte]);
        EXPECT_GE(values.size(), 16) << byte;
    }
}

TEST(UuidSource, AscendsInTheOrderOfTheStoredBytes)
{
    std::vector<QByteArray> stored;
    for (const QUuid &id : UuidSource().ascending(1'000))
        stored.push_back(id.toRfc4122());
    EXPECT_EQ(stored.size(), 1'000);
    EXPECT_TRUE(std::is_sorted(stored.begin(), stored.end()));
    EXPECT_EQ(std::adjacent_find(stored.begin(), stored.end()), stored.end());
}
