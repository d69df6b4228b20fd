#include "support/PrivateTemporaryFolder.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const PrivateTemporaryFolder folder;
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
