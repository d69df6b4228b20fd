#include "surface/LazyTextLayout.h"

#include "surface/ParagraphShape.h"

#include "kit/controls/LongText.h"
#include "surface/DisplayText.h"
#include "surface/PassagePainter.h"
#include "surface/PassageSegments.h"
#include "surface/ReaderMetrics.h"

#include <QFontMetricsF>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr int minColumnWidth = 40;

QTextOption optionFor(const QTextBlock &block)
{
    QTextOption option;
    option.setTextDirection(Qt::LayoutDirectionAuto);
    if (block.textDirection() == Qt::RightToLeft) // the direction alone doesn't align
        option.setAlignment(Qt::AlignRight);
    const bool mayLackSpaces = block.length() > DisplayText::maxParagraph; // only then is a copy of the text worth it
    option.setWrapMode(LongText::wrapMode(mayLackSpaces ? block.text() : QString()));
    return option;
}

/// Breaks the block into lines of that width, from (0, 0) down. Returns their height.
qreal breakIntoLines(const QTextBlock &block, qreal width)
{
    QTextLayout &layout = *block.layout();
    layout.setTextOption(optionFor(block));
    layout.setCacheEnabled(true);
    layout.beginLayout();
    qreal y = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, y});
        // Rounded up before the distance is added, as Qt's own layout does for a block format with a line distance.
        y += std::ceil(line.ascent() + line.descent() + line.leading()) + ReaderMetrics::lineDistance;
    }
    layout.endLayout();
    return y;
}

/// `height` in whole pixels. Half pixels are rounded down and up in turn, so that they don't add up.
int wholeHeight(qreal height, int block)
{
    return int(std::floor(height + (block % 2 == 0 ? 0.25 : 0.75)));
}

} // namespace

LazyTextLayout::LazyTextLayout(QTextDocument *document, const TextMarks &marks)
    : QAbstractTextDocumentLayout(document),
      m_marks(marks)
{
    measure();
}

void LazyTextLayout::draw(QPainter *painter, const PaintContext &context)
{
    PassagePainter passagePainter(*painter, m_marks, context);
    // A band is higher than its line, so the blocks just above and below are drawn, too.
    const int last = blockAt(qint64(context.clip.bottom()) + 2);
    for (int block = blockAt(qint64(context.clip.top()) - 2); block <= last; ++block) {
        layOut(block);
        passagePainter.paint(document()->findBlockByNumber(block), QPointF(columnLeft(), qreal(top(block))));
    }
}

int LazyTextLayout::hitTest(const QPointF &point, Qt::HitTestAccuracy accuracy) const
{
    const int block = blockAt(qint64(std::floor(point.y())));
    layOut(block);
    const QPointF inBlock = point - QPointF(columnLeft(), qreal(top(block)));
    if (accuracy == Qt::FuzzyHit && block == 0 && inBlock.y() < 0)
        return 0;
    if (accuracy == Qt::FuzzyHit && block + 1 == blockCount() && inBlock.y() >= height(block))
        return document()->characterCount() - 1;
    const QTextLine line = lineNear(block, inBlock.y());
    if (accuracy == Qt::ExactHit && !line.naturalTextRect().contains(inBlock))
        return -1;
    return document()->findBlockByNumber(block).position() + line.xToCursor(inBlock.x());
}

int LazyTextLayout::characterAt(const QPointF &point) const
{
    const int block = blockAt(qint64(std::floor(point.y())));
    layOut(block);
    const QTextLine line = lineNear(block, point.y() - qreal(top(block)));
    const int inBlock = line.xToCursor(point.x() - columnLeft(), QTextLine::CursorOnCharacter);
    return document()->findBlockByNumber(block).position() + inBlock;
}

QSizeF LazyTextLayout::documentSize() const
{
    constexpr qreal maxHeight = 1 << 30; // scroll bars count in int
    return {m_pageWidth, std::min(qreal(m_heights.total()) + 2 * ReaderMetrics::verticalInset, maxHeight)};
}

QRectF LazyTextLayout::frameBoundingRect(QTextFrame *) const
{
    return {QPointF(), documentSize()};
}

QRectF LazyTextLayout::blockBoundingRect(const QTextBlock &block) const
{
    if (!block.isValid() || block.blockNumber() >= blockCount())
        return {};
    const int number = block.blockNumber();
    layOut(number);
    return QRectF(columnLeft(), qreal(top(number)), columnWidth(), height(number));
}

int LazyTextLayout::blockAt(qint64 y) const
{
    return m_heights.blockAt(y - ReaderMetrics::verticalInset);
}

qint64 LazyTextLayout::top(int block) const
{
    return m_heights.top(block) + ReaderMetrics::verticalInset;
}

int LazyTextLayout::columnLeft() const
{
    return ReaderMetrics::sideInset(int(m_pageWidth));
}

int LazyTextLayout::columnWidth() const
{
    return std::clamp(int(m_pageWidth) - 2 * ReaderMetrics::minSideInset, minColumnWidth, ReaderMetrics::columnWidth);
}

QTextLine LazyTextLayout::lineAt(int position) const
{
    const QTextBlock block = document()->findBlock(position);
    layOut(block.blockNumber());
    return block.layout()->lineForTextPosition(position - block.position());
}

QTextLine LazyTextLayout::lineNear(int block, qreal y) const
{
    const QTextLayout &layout = *document()->findBlockByNumber(block).layout();
    const int firstBelow = firstLineNot(layout, [y](const QTextLine &line) { return line.y() <= y; });
    return layout.lineAt(std::max(firstBelow - 1, 0));
}

void LazyTextLayout::layOut(int block) const
{
    const bool isLaidOut = m_laidOut.contains(block);
    m_laidOut[block] = ++m_now;
    if (isLaidOut)
        return;
    releaseOldest();
    const int laidOut = wholeHeight(breakIntoLines(document()->findBlockByNumber(block), columnWidth()), block);
    if (laidOut == height(block))
        return;
    m_heights.setHeight(block, laidOut);
    Q_EMIT heightsChanged();
}

void LazyTextLayout::expectVisible(int blocks) const
{
    m_maxLaidOut = std::max(minKept, 2 * size_t(blocks));
}

/// The two fifths that were asked for longest ago. Callers still hold lines of the blocks they asked for last.
void LazyTextLayout::releaseOldest() const
{
    if (m_laidOut.size() <= m_maxLaidOut)
        return;
    std::vector<quint64> times;
    for (const auto &[block, time] : m_laidOut)
        times.push_back(time);
    const auto limit = times.begin() + std::ssize(times) * 2 / 5;
    std::ranges::nth_element(times, limit);
    std::erase_if(m_laidOut, [this, oldest = *limit](const auto &entry) {
        const bool isOld = entry.second < oldest;
        if (isOld)
            release(entry.first);
        return isOld;
    });
}

void LazyTextLayout::release(int block) const
{
    QTextLayout &layout = *document()->findBlockByNumber(block).layout();
    layout.setCacheEnabled(false); // clearLayout alone keeps the glyphs; ending a layout without a cache frees them
    layout.beginLayout();
    layout.endLayout();
    layout.clearLayout();
}

void LazyTextLayout::releaseAll()
{
    for (const auto &[block, time] : m_laidOut)
        release(block);
    m_laidOut.clear();
}

void LazyTextLayout::announceSize()
{
    if (documentSize() == m_announcedSize)
        return;
    m_announcedSize = documentSize();
    Q_EMIT documentSizeChanged(m_announcedSize);
}

/// The text never changes: the document calls this when its page size or its font is set.
void LazyTextLayout::documentChanged(int, int, int)
{
    const int oldWidth = columnWidth();
    m_pageWidth = document()->pageSize().width();
    const bool isFontNew = m_font != document()->defaultFont();
    if (!isFontNew && columnWidth() == oldWidth)
        return; // a wider page only moves the column
    releaseAll();
    if (isFontNew)
        measure();
    estimateHeights();
    Q_EMIT rewrapped();
}

void LazyTextLayout::measure()
{
    m_font = document()->defaultFont();
    m_pageWidth = document()->pageSize().width();
    m_lengths.clear();
    m_lengths.reserve(size_t(document()->blockCount()));
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        m_lengths.push_back(block.length() - 1);
    m_estimate = sampled();
    estimateHeights();
}

/// The mean advance and line height of some paragraphs from all over the document.
LazyTextLayout::Estimate LazyTextLayout::sampled() const
{
    const int samples = std::min(document()->blockCount(), 16);
    constexpr int sampleLength = 600;
    qreal width = 0;
    qreal heights = 0;
    int units = 0;
    for (int sample = 0; sample < samples; ++sample) {
        const int number = int(qint64(sample) * (document()->blockCount() - 1) / std::max(samples - 1, 1));
        QTextLayout layout(document()->findBlockByNumber(number).text().left(sampleLength), m_font);
        layout.beginLayout();
        const QTextLine line = layout.createLine();
        layout.endLayout();
        width += line.naturalTextWidth();
        heights += std::ceil(line.height());
        units += line.textLength();
    }
    const qreal unitWidth = units > 0 ? width / units : QFontMetricsF(m_font).averageCharWidth();
    return {unitWidth, heights / samples + ReaderMetrics::lineDistance};
}

void LazyTextLayout::estimateHeights()
{
    const qreal usableWidth = std::max(columnWidth() - 3 * m_estimate.unitWidth, m_estimate.unitWidth);
    std::vector<int> heights;
    heights.reserve(m_lengths.size());
    for (const int length : m_lengths) {
        const qreal lines = std::max(1.0, std::ceil(length * m_estimate.unitWidth / usableWidth));
        heights.push_back(wholeHeight(lines * m_estimate.lineHeight, int(heights.size())));
    }
    m_heights = BlockHeights(std::move(heights));
}
