#include <QImage>
#include <QImageReader>

#include <gtest/gtest.h>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

QImage drawn(const QSize &size)
{
    QImageReader reader(QStringLiteral(VORN_SOURCE "/src/kit/icons/vorn.svg"));
    reader.setScaledSize(size);
    return reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// The mean difference of a channel of a pixel, from 0 to 255.
double difference(const QImage &first, const QImage &second)
{
    qint64 sum = 0;
    for (int y = 0; y < first.height(); ++y)
        for (qsizetype byte = 0; byte < qsizetype(first.width()) * 4; ++byte)
            sum += std::abs(first.constScanLine(y)[byte] - second.constScanLine(y)[byte]);
    return double(sum) / (4.0 * first.width() * first.height());
}

} // namespace

using ProgramIcon = testing::TestWithParam<int>;

TEST_P(ProgramIcon, ShowsTheDrawingAsItIsNow)
{
    const int size = GetParam();
    const QImage icon(QStringLiteral(VORN_SOURCE "/packaging/icons/vorn-%1.png").arg(size));
    const QImage drawing = drawn(QSize(size, size));
    ASSERT_EQ(icon.size(), QSize(size, size));
    ASSERT_EQ(drawing.size(), icon.size());
    // Two renderers smooth edges differently, which shows more the more of the icon is edge.
    EXPECT_LT(difference(icon.convertToFormat(QImage::Format_ARGB32_Premultiplied), drawing), .2 + 16.0 / size);
}

INSTANTIATE_TEST_SUITE_P(Packaging, ProgramIcon, testing::Values(16, 22, 24, 32, 48, 64, 128, 256, 512));
