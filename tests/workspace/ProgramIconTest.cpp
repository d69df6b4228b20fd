#include <QImage>
#include <QImageReader>

#include <gtest/gtest.h>

#include <cstdlib>

using namespace Qt::StringLiterals;

class ProgramIcon : public testing::TestWithParam<int> { };
INSTANTIATE_TEST_SUITE_P(Packaging, ProgramIcon, testing::Values(16, 22, 24, 32, 48, 64, 128, 256, 512));

TEST_P(ProgramIcon, ShowsTheDrawingAsItIsNow)
{
    const int size = GetParam();
    QImageReader reader(QStringLiteral(VORN_SOURCE "/src/kit/icons/vorn.svg"));
    reader.setScaledSize({size, size});
    const QImage drawing = reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QImage icon = QImage(QStringLiteral(VORN_SOURCE "/packaging/icons/vorn-%1.png").arg(size))
                            .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    ASSERT_EQ(icon.size(), QSize(size, size));
    ASSERT_EQ(drawing.size(), icon.size());
    qint64 difference = 0; // of all channels of all pixels
    for (int y = 0; y < size; ++y)
        for (qsizetype byte = 0; byte < qsizetype(size) * 4; ++byte)
            difference += std::abs(icon.constScanLine(y)[byte] - drawing.constScanLine(y)[byte]);
    // Two renderers smooth edges differently, which shows more the more of the icon is edge.
    EXPECT_LT(double(difference) / (4.0 * size * size), .2 + 16.0 / size);
}
