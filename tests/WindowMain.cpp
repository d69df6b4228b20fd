#include "support/PrivateTemporaryFolder.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen"); // tests of screens need none
    Q_INIT_RESOURCE(vorn); // the icons, which a static library's program must ask for
    const QApplication application(argc, argv);
    const PrivateTemporaryFolder folder;
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
