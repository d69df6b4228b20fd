#pragma once

#include <QMap>
#include <QStringList>

#include <string>

class DatabaseQueue;
class QWidget;

/// What must hold however a window has been used.
namespace Soundness {

/// Each stored passage lies in the text of its document and belongs to a code, and the codes are a forest.
void checkFile(DatabaseQueue &queue);
/// All that a screen reader would find in the window: what each widget is called and what it holds, row by row.
[[nodiscard]] QStringList shownBy(QWidget &window);
/// The place where the two begin to differ; empty when they are the same.
[[nodiscard]] std::string difference(const QStringList &one, const QStringList &other);
/// How many objects of each class belong to the window.
[[nodiscard]] QMap<QByteArray, qsizetype> objectsOf(const QWidget &window);
/// Bytes that are allocated now; 0 where nobody knows.
[[nodiscard]] qint64 heapInUse();

} // namespace Soundness
