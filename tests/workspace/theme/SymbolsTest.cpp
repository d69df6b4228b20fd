#include "ThemedTest.h"

#include "workspace/theme/Painting.h"
#include "workspace/theme/Symbols.h"
#include "workspace/theme/ThemeColors.h"

#include <QDir>
#include <QImage>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

/// The strongest pixel's colour, without its transparency.
QColor ink(const QPixmap &pixmap)
{
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    QColor strongest = Qt::transparent;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() > strongest.alpha())
                strongest = image.pixelColor(x, y);
        }
    }
    return strongest;
}

} // namespace

TEST_F(ThemedTest, EverySymbolIsDrawnInTheColourAskedFor)
{
    const QStringList files = QDir(u":/icons"_s).entryList({u"*.svg"_s});
    EXPECT_GE(files.size(), 27);
    for (const QString &file : files) {
        if (file == u"vorn.svg"_s)
            continue;
        const QPixmap pixmap = Symbols::pixmap(file.chopped(4), 16, Qt::red, Symbols::regularStroke, 2);
        ASSERT_FALSE(pixmap.isNull()) << file.toStdString();
        EXPECT_EQ(pixmap.size(), QSize(32, 32));
        EXPECT_EQ(ink(pixmap).rgb() & 0xFFFFFF, QColor(Qt::red).rgb() & 0xFFFFFF) << file.toStdString();
    }
}

TEST_F(ThemedTest, IconsFollowTheLookAndTheState)
{
    const QIcon icon = Symbols::icon(u"doc.text"_s, Symbols::Tint::secondary, 1.9);
    const auto shown = [&icon](QIcon::Mode mode) { return ink(icon.pixmap({48, 48}, 1, mode)).name(); };
    EXPECT_EQ(shown(QIcon::Normal), Theme::colors().secondary.name());
    EXPECT_EQ(shown(QIcon::Active), Theme::colors().text.name());
    EXPECT_EQ(shown(QIcon::Disabled), Theme::colors().tertiary.name());
    Theme::setLook({true, false});
    EXPECT_EQ(shown(QIcon::Normal), Theme::colors().secondary.name());
}

TEST_F(ThemedTest, DotsGetAnOutlineInHighContrast)
{
    const auto border = [] {
        QPixmap pixmap(36, 36);
        pixmap.fill(Qt::white);
        QPainter painter(&pixmap);
        Painting::dot(painter, QRectF(0, 0, 36, 36), Qt::yellow);
        painter.end();
        return pixmap.toImage().pixelColor(18, 0);
    };
    EXPECT_GT(border().lightness(), 100);
    Theme::setLook({false, true});
    EXPECT_LT(border().lightness(), 60);
}
