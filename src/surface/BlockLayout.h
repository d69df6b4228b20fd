#pragma once

#include <QtGlobal>

class QTextBlock;

/// Breaks a single block into lines.
namespace BlockLayout {

/// Lays out the block's lines in a column of that width, from (0, 0) down. Returns their height.
qreal layOut(const QTextBlock &block, qreal width);

/// Takes the lines away and frees what was kept to draw them.
void release(const QTextBlock &block);

} // namespace BlockLayout
