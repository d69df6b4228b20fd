#pragma once

#include <QImage>
#include <QString>

class QWidget;

/// Drawing what a user sees, and comparing it with what she saw before.
namespace Picture {

/// The window with everything that has opened over it, or only `part` of it.
[[nodiscard]] QImage of(const QWidget &window, const QWidget *part = nullptr);
/// The pictures side by side.
[[nodiscard]] QImage joined(const QList<QImage> &pictures);
/// At a quarter of its width and height, in 256 colours, as the pictures are kept.
[[nodiscard]] QImage quarter(const QImage &picture);
/// The blocks of 8 × 8 pixels in which the quarter of a picture differs from that of an earlier one; all of it as one
/// block if their sizes differ.
[[nodiscard]] QList<QRect> differences(const QImage &picture, const QImage &expected);
/// The full-size picture with the blocks of its quarter outlined.
[[nodiscard]] QImage marked(QImage picture, const QList<QRect> &blocks);

} // namespace Picture
