#include "Picture.h"

#include <QApplication>
#include <QMap>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <functional>

namespace {

constexpr int scale = 4;
constexpr int blockSize = 8;
// Rounding differs a little between processors; a pixel is off by more where something else is drawn.
constexpr int channelTolerance = 4;
constexpr int pixelTolerance = 1; ///< of a block's pixels
constexpr qsizetype maxColors = 256;
constexpr qsizetype exactColors = 128; ///< the most frequent ones: surfaces, and letters on them
constexpr int colorDistance = 12; ///< between the others, which stand for those around them

/// What lies over what: a sheet over its window, a menu over everything.
int height(const QWidget &window)
{
    int levels = window.windowType() == Qt::Popup ? 100 : 0;
    for (const QWidget *parent = window.parentWidget(); parent != nullptr; parent = parent->window()->parentWidget())
        ++levels;
    return levels;
}

int distance(QRgb one, QRgb other)
{
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
        std::abs(qBlue(one) - qBlue(other))});
}

QList<QRgb> mainColors(const QImage &picture)
{
    QMap<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    QList<QRgb> byFrequency = counts.keys();
    std::ranges::stable_sort(byFrequency, std::ranges::greater(), [&](QRgb color) { return counts.value(color); });
    QList<QRgb> colors = byFrequency.first(std::min(exactColors, byFrequency.size()));
    for (const QRgb color : byFrequency.sliced(colors.size())) {
        const auto isNear = [color](QRgb other) { return distance(color, other) < colorDistance; };
        if (colors.size() < maxColors && std::ranges::none_of(colors, isNear))
            colors.append(color);
    }
    return colors;
}

QImage shrunk(const QImage &picture)
{
    return picture.scaled(picture.size() / scale, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_RGB32);
}

bool differsIn(const QRect &block, const QImage &one, const QImage &other)
{
    int count = 0;
    for (int y = block.top(); y <= block.bottom(); ++y) {
        for (int x = block.left(); x <= block.right(); ++x)
            count += distance(one.pixel(x, y), other.pixel(x, y)) > channelTolerance ? 1 : 0;
    }
    return count > pixelTolerance;
}

} // namespace

QImage Picture::of(const QWidget &window, const QWidget *part)
{
    QWidgetList windows = QApplication::topLevelWidgets();
    windows.removeIf([](const QWidget *each) { return !each->isVisible(); });
    std::ranges::sort(windows, {}, [](const QWidget *each) { return height(*each); });
    QImage picture(window.size(), QImage::Format_RGB32);
    QPainter painter(&picture);
    for (QWidget *each : windows)
        painter.drawPixmap(window.mapFromGlobal(each->mapToGlobal(QPoint())), each->grab());
    painter.end();
    if (part == nullptr)
        return picture;
    const QPoint corner = window.mapFromGlobal(part->mapToGlobal(QPoint()));
    return picture.copy(QRect(corner, part->size()) & picture.rect());
}

QImage Picture::joined(const QList<QImage> &pictures)
{
    QSize size(0, 0);
    for (const QImage &each : pictures)
        size = QSize(size.width() + each.width(), std::max(size.height(), each.height()));
    QImage all(size, QImage::Format_RGB32);
    all.fill(Qt::gray);
    QPainter painter(&all);
    int left = 0;
    for (const QImage &each : pictures) {
        painter.drawImage(left, 0, each);
        left += each.width();
    }
    return all;
}

QImage Picture::quarter(const QImage &picture)
{
    const QImage small = shrunk(picture);
    return small.convertToFormat(QImage::Format_Indexed8, mainColors(small));
}

QList<QRect> Picture::differences(const QImage &picture, const QImage &expected)
{
    const QImage seen = shrunk(picture).convertToFormat(QImage::Format_Indexed8, expected.colorTable());
    if (seen.size() != expected.size())
        return {seen.rect()};
    QList<QRect> blocks;
    for (int y = 0; y < seen.height(); y += blockSize) {
        for (int x = 0; x < seen.width(); x += blockSize) {
            const QRect block = QRect(x, y, blockSize, blockSize).intersected(seen.rect());
            if (differsIn(block, seen, expected))
                blocks.append(block);
        }
    }
    return blocks;
}

QImage Picture::marked(QImage picture, const QList<QRect> &blocks)
{
    QPainter painter(&picture);
    painter.setPen(Qt::red);
    for (const QRect &block : blocks)
        painter.drawRect(QRect(block.topLeft() * scale, block.size() * scale));
    return picture;
}
