#include "support/PrivateTemporaryFolder.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen"); // tests of screens need none
    // What is drawn mustn't depend on the desktop's fonts, language, time zone or scale.
    qputenv("FONTCONFIG_FILE", VORN_FIXTURES "/fonts.conf");
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("TZ", "UTC");
    for (const char *scale : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI"})
        qunsetenv(scale);
    Q_INIT_RESOURCE(vorn); // the icons, which a static library's program must ask for
    const QApplication application(argc, argv);
    const PrivateTemporaryFolder folder;
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
