#include "kit/theme/Shadow.h"

#include "kit/theme/Theme.h"

#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <qdrawutil.h>

#include <cmath>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

QColor black(double alpha)
{
    return QColor::fromRgbF(0, 0, 0, float(alpha));
}

/// One pass of a running mean over `count` bytes that lie `stride` apart; `width` is odd, beyond the ends is nothing.
void averageLine(uchar *line, qsizetype stride, int count, int width, std::vector<uchar> &copy)
{
    for (int index = 0; index < count; ++index)
        copy[size_t(index)] = line[index * stride];
    const int half = width / 2;
    int sum = 0;
    for (int index = 0; index < std::min(half, count); ++index)
        sum += copy[size_t(index)];
    for (int index = 0; index < count; ++index) {
        if (index + half < count)
            sum += copy[size_t(index) + size_t(half)];
        if (index > half)
            sum -= copy[size_t(index - half - 1)];
        line[index * stride] = uchar(sum / width);
    }
}

/// Three running means come close to a Gaussian, at a cost that doesn't depend on its width.
void blur(QImage &mask, double deviation)
{
    const int width = std::max(1, int(std::lround(deviation * 1.88))) | 1;
    std::vector<uchar> copy(size_t(std::max(mask.width(), mask.height())));
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < mask.height(); ++y)
            averageLine(mask.scanLine(y), 1, mask.width(), width, copy);
        for (int x = 0; x < mask.width(); ++x)
            averageLine(mask.bits() + x, mask.bytesPerLine(), mask.height(), width, copy);
    }
}

/// The shadow of a rounded body that stands `spread` away from the edges of a picture of `size`; all in device pixels.
QPixmap render(const QColor &color, double radius, double spread, QSize size)
{
    QImage mask(size, QImage::Format_Alpha8);
    mask.fill(0);
    QPainter body(&mask);
    body.setRenderHint(QPainter::Antialiasing);
    body.setPen(Qt::NoPen);
    body.setBrush(Qt::black);
    body.drawRoundedRect(QRectF(mask.rect()).adjusted(spread, spread, -spread, -spread), radius, radius);
    body.end();
    blur(mask, spread / 2);

    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, mask);
    painter.end();
    return QPixmap::fromImage(image);
}

/// The length of the picture for a target of that length: no longer than its two soft corners and a middle to stretch.
int pictureLength(double targetLength, double spread, double radius)
{
    const double needed = 4 * spread + 2 * radius + 1;
    return int(std::ceil(std::min(targetLength, needed)));
}

} // namespace

QMargins Shadow::reach() const
{
    return {blur, std::max(0, blur - offset), blur, blur + offset};
}

void Shadow::paint(QPainter &painter, const QRectF &body, double radius) const
{
    if (Theme::colors().look.hasHighContrast)
        return;
    const double ratio = painter.device()->devicePixelRatioF();
    const double spread = blur * ratio;
    const double rounding = std::min(radius, std::min(body.width(), body.height()) / 2) * ratio;
    const QRectF target = body.translated(0, offset).adjusted(-blur, -blur, blur, blur);
    const QSize size(pictureLength(target.width() * ratio, spread, rounding),
        pictureLength(target.height() * ratio, spread, rounding));
    const QString key = u"shadow %1 %2 %3 %4x%5"_s.arg(color.rgba(), 0, 16)
                            .arg(spread)
                            .arg(rounding)
                            .arg(size.width())
                            .arg(size.height());
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture)) {
        picture = render(color, rounding, spread, size);
        QPixmapCache::insert(key, picture);
    }
    painter.save();
    painter.scale(1 / ratio, 1 / ratio);
    const int across = (size.width() - 1) / 2;
    const int down = (size.height() - 1) / 2;
    const QRect deviceTarget = QRectF(target.topLeft() * ratio, target.size() * ratio).toRect();
    qDrawBorderPixmap(&painter, deviceTarget, {across, down, across, down}, picture);
    painter.restore();
}

Shadow Shadow::control()
{
    return {black(.07), 2, 1};
}

Shadow Shadow::banner()
{
    return {black(.12), 20, 4};
}

Shadow Shadow::selectionBar()
{
    return {black(.15), 28, 5};
}

Shadow Shadow::hint()
{
    return {black(.08), 16, 3};
}

Shadow Shadow::menu()
{
    return {QColor::fromRgbF(10 / 255.F, 10 / 255.F, 30 / 255.F, .20F), 30, 8};
}

Shadow Shadow::sheet()
{
    return {black(.26), 60, 18};
}
