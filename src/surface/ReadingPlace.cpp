#include "surface/ReadingPlace.h"

#include "surface/LazyTextLayout.h"
#include "surface/PassagePainter.h"
#include "surface/ReaderMetrics.h"

#include <QPointF>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

ReadingPlace::ReadingPlace(const LazyTextLayout &layout) : m_layout(&layout)
{
    moveToStart();
}

qint64 ReadingPlace::scrollValue() const
{
    return m_layout->top(m_block) + m_offset;
}

void ReadingPlace::moveToStart()
{
    set(0, -ReaderMetrics::verticalInset);
}

void ReadingPlace::moveToEnd(int viewHeight)
{
    const int last = m_layout->blockCount() - 1;
    m_layout->layOut(last);
    set(last, m_layout->height(last) + ReaderMetrics::verticalInset - viewHeight);
}

void ReadingPlace::moveBy(int pixels)
{
    set(m_block, m_offset + pixels);
}

void ReadingPlace::moveTo(qint64 scrollValue)
{
    const int block = m_layout->blockAt(scrollValue);
    set(block, int(scrollValue - m_layout->top(block)));
}

void ReadingPlace::show(int first, int last, int viewHeight)
{
    const Line from = lineAt(first);
    const Line to = lineAt(last);
    const bool startsAbove = from.block < m_block || (from.block == m_block && from.top < m_offset);
    if (startsAbove || distance(from, to, viewHeight) > viewHeight) {
        set(from.block, from.top);
        return;
    }
    const Line viewTop{m_block, m_offset, m_offset};
    if (distance(viewTop, to, viewHeight) > viewHeight)
        set(to.block, to.bottom - viewHeight);
}

void ReadingPlace::layOutView(int viewHeight)
{
    int bottom = -m_offset;
    int block = m_block;
    for (; block < m_layout->blockCount() && bottom < viewHeight; ++block) {
        m_layout->layOut(block);
        bottom += m_layout->height(block);
    }
    m_layout->expectVisible(block - m_block);
    const bool isEndInView = block == m_layout->blockCount();
    if (isEndInView && bottom + ReaderMetrics::verticalInset < viewHeight)
        moveBy(bottom + ReaderMetrics::verticalInset - viewHeight);
}

void ReadingPlace::findAgain()
{
    const int position = m_position;
    const int belowLine = m_belowLine;
    const QTextLine line = m_layout->lineAt(position);
    m_block = m_layout->document()->findBlock(position).blockNumber();
    m_offset = int(std::lround(line.y())) + belowLine;
    normalise();
    m_position = position; // not the line's start, or the place would move when the old width comes back
    m_belowLine = belowLine;
}

ReadingPlace::Line ReadingPlace::lineAt(int position) const
{
    const QTextLine line = m_layout->lineAt(position);
    const auto extent = PassagePainter::bandExtent(line);
    const int block = m_layout->document()->findBlock(position).blockNumber();
    return {block, int(std::floor(extent.top)), int(std::ceil(extent.bottom))};
}

int ReadingPlace::distance(const Line &from, const Line &to, int limit) const
{
    int pixels = to.bottom - from.top;
    for (int block = from.block; block < to.block && pixels - to.bottom <= limit; ++block) {
        m_layout->layOut(block);
        pixels += m_layout->height(block);
    }
    return pixels;
}

void ReadingPlace::set(int block, int offset)
{
    m_block = block;
    m_offset = offset;
    normalise();
    remember();
}

void ReadingPlace::normalise()
{
    m_layout->layOut(m_block);
    while (m_offset < 0 && m_block > 0) {
        --m_block;
        m_layout->layOut(m_block);
        m_offset += m_layout->height(m_block);
    }
    while (m_offset >= m_layout->height(m_block) && m_block + 1 < m_layout->blockCount()) {
        m_offset -= m_layout->height(m_block);
        ++m_block;
        m_layout->layOut(m_block);
    }
    m_offset = std::max(m_offset, -ReaderMetrics::verticalInset);
}

void ReadingPlace::remember()
{
    const QTextBlock block = m_layout->document()->findBlockByNumber(m_block);
    const QTextLine line = m_layout->lineNear(m_block, m_offset);
    m_position = block.position() + line.textStart();
    m_belowLine = m_offset - int(std::lround(line.y()));
}
