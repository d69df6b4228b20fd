#include "records/UuidSource.h"

#include <gtest/gtest.h>

#include <set>

TEST(UuidSource, MakesRandomIdentifiersInTheOrderOfTheStoredBytes)
{
    std::set<QByteArray> seen;
    for (int round = 0; round < 2; ++round) {
        QByteArray last;
        for (const QUuid &id : UuidSource().ascending(1'000)) {
            EXPECT_EQ(id.version(), QUuid::Random);
            EXPECT_EQ(id.variant(), QUuid::DCE);
            EXPECT_LT(last, id.toRfc4122());
            last = id.toRfc4122();
            seen.insert(last);
        }
    }
    EXPECT_EQ(seen.size(), 2'000);
    for (qsizetype byte = 0; byte < 16; ++byte) { // each byte is random
        std::set<char> values;
        for (const QByteArray &id : seen)
            values.insert(id[byte]);
        EXPECT_GE(values.size(), 16) << byte;
    }
}
