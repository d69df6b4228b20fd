#include "ThemedTest.h"

#include "workspace/theme/Shadow.h"

#include <QImage>
#include <QPainter>

namespace {

struct ShadowCase {
    const char *name;
    QSize body;
    double radius;
    int blur;
    double ratio;
};

class ShadowOfBody : public ThemedTest, public testing::WithParamInterface<ShadowCase> { };

} // namespace

/// A seam or a missing side would be a step, or darker on one side than on the other.
TEST_P(ShadowOfBody, FadesEvenlyToAllSides)
{
    const ShadowCase &row = GetParam();
    QImage image(((row.body + QSize(2, 2) * row.blur) * row.ratio), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(row.ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const Shadow shadow{Qt::black, row.blur, 0};
    shadow.paint(painter, QRectF(QPointF(row.blur, row.blur), QSizeF(row.body)), row.radius);
    painter.end();
    const auto alpha = [&image](int x, int y) { return qAlpha(image.pixel(x, y)); };
    for (int y = 0; y < image.height() / 2; ++y) {
        for (int x = 0; x < image.width() / 2; ++x) {
            ASSERT_LE(alpha(x, y), alpha(x + 1, y) + 1) << x << ", " << y;
            ASSERT_LE(alpha(x + 1, y) - alpha(x, y), 20) << x << ", " << y;
            ASSERT_NEAR(alpha(x, y), alpha(image.width() - 1 - x, y), 2) << x << ", " << y;
            ASSERT_NEAR(alpha(x, y), alpha(x, image.height() - 1 - y), 2) << x << ", " << y;
        }
    }
    EXPECT_LT(alpha(0, image.height() / 2), 10);
    EXPECT_GT(alpha(image.width() / 2, image.height() / 2), 20);
}

INSTANTIATE_TEST_SUITE_P(Bodies, ShadowOfBody,
    testing::Values(ShadowCase{"stretched_in_both_directions", {200, 150}, 12, 20, 1},
        ShadowCase{"capsule_lower_than_its_corners", {160, 34}, 17, 20, 1},
        ShadowCase{"body_smaller_than_the_blur", {16, 12}, 6, 20, 1},
        ShadowCase{"double_resolution", {120, 60}, 9, 15, 2},
        ShadowCase{"fractional_resolution", {120, 60}, 9, 16, 1.5}),
    rowName);

TEST_F(ThemedTest, HighContrastHasNoShadows)
{
    Theme::setLook({false, true});
    QImage image(60, 60, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    const QImage before = image;
    QPainter painter(&image);
    Shadow::menu().paint(painter, QRectF(20, 20, 20, 20), 5);
    painter.end();
    EXPECT_EQ(image, before);
}
