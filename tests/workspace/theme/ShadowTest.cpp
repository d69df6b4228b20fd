#include "ThemedTest.h"

#include "workspace/theme/Motion.h"
#include "workspace/theme/PopupShape.h"
#include "workspace/theme/Shadow.h"

#include <QImage>
#include <QPainter>

#include <cmath>
#include <vector>

namespace {

struct ShadowCase {
    const char *name;
    QSize body;
    double radius;
    int blur;
    double ratio;
};

class ShadowOfBody : public ThemedTest, public testing::WithParamInterface<ShadowCase> { };

using Field = std::vector<std::vector<double>>;

QImage canvas(const ShadowCase &row)
{
    const QSize size = row.body + QSize(2, 2) * row.blur;
    QImage image((QSizeF(size) * row.ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(row.ratio);
    image.fill(Qt::transparent);
    return image;
}

/// Convolved with a true Gaussian along the rows; transposed, so that doing it twice does both directions.
Field blurredAndTransposed(const Field &field, double deviation)
{
    const int reach = int(deviation * 4);
    std::vector<double> weights;
    double sum = 0;
    for (int at = -reach; at <= reach; ++at) {
        weights.push_back(std::exp(-at * at / (2 * deviation * deviation)));
        sum += weights.back();
    }
    const size_t height = field.size();
    const size_t width = field.front().size();
    Field result(width, std::vector<double>(height, 0));
    for (size_t y = 0; y < height; ++y) {
        for (size_t x = 0; x < width; ++x) {
            double value = 0;
            for (int at = -reach; at <= reach; ++at) {
                const qint64 from = qint64(x) + at;
                if (from >= 0 && from < qint64(width))
                    value += field[y][size_t(from)] * weights[size_t(at + reach)];
            }
            result[x][y] = value / sum;
        }
    }
    return result;
}

/// What the shadow is by its definition, at whatever cost.
Field plainShadow(const ShadowCase &row)
{
    QImage image = canvas(row);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawRoundedRect(QRectF(QPointF(row.blur, row.blur), QSizeF(row.body)), row.radius, row.radius);
    painter.end();
    Field field(size_t(image.height()), std::vector<double>(size_t(image.width()), 0));
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            field[size_t(y)][size_t(x)] = qAlpha(image.pixel(x, y));
    }
    const double deviation = row.blur * row.ratio / 2;
    return blurredAndTransposed(blurredAndTransposed(field, deviation), deviation);
}

} // namespace

TEST_P(ShadowOfBody, LooksLikeATrueBlur)
{
    const ShadowCase &row = GetParam();
    QImage image = canvas(row);
    QPainter painter(&image);
    const Shadow shadow{Qt::black, row.blur, 0};
    shadow.paint(painter, QRectF(QPointF(row.blur, row.blur), QSizeF(row.body)), row.radius);
    painter.end();
    const Field expected = plainShadow(row);
    double worst = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            worst = std::max(worst, std::abs(qAlpha(image.pixel(x, y)) - expected[size_t(y)][size_t(x)]));
    }
    EXPECT_LE(worst, 16) << "of 255, at full strength; shadows are a quarter of that at most";
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

TEST_F(ThemedTest, APopupKeepsOnlyWhatItsRoundingCoversWhole)
{
    const QSize size(40, 30);
    const QRegion core = PopupShape::core(size, 9);
    EXPECT_FALSE(core.contains(QPoint(0, 0)));
    EXPECT_FALSE(core.contains(QPoint(39, 29)));
    EXPECT_TRUE(core.contains(QPoint(20, 0)));
    EXPECT_TRUE(core.contains(QPoint(0, 15)));
    EXPECT_TRUE(core.contains(QPoint(39, 15)));
    EXPECT_TRUE(core.contains(QPoint(20, 29)));
    EXPECT_LE(PopupShape::core({6, 4}, 9).boundingRect().height(), 4);
}

TEST(Motion, SpringArrivesAndHardlyOvershoots)
{
    const QEasingCurve spring = Motion::spring();
    EXPECT_NEAR(spring.valueForProgress(0), 0, 1e-9);
    EXPECT_EQ(spring.valueForProgress(1), 1);
    EXPECT_NEAR(spring.valueForProgress(.999), 1, .005);
    double highest = 0;
    for (int step = 0; step <= 1000; ++step)
        highest = std::max(highest, spring.valueForProgress(step / 1000.));
    EXPECT_NEAR(highest, 1.006, .001);
}

TEST(Motion, SpringIsCloseToItsSplineAllTheWay)
{
    const QEasingCurve spring = Motion::spring();
    QEasingCurve spline(QEasingCurve::BezierSpline);
    spline.addCubicBezierSegment({.275, .40}, {.10, 1.10}, {1, 1});
    for (int step = 0; step <= 100; ++step)
        EXPECT_NEAR(spring.valueForProgress(step / 100.), spline.valueForProgress(step / 100.), .035) << step;
}
