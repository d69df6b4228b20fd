#include "surface/PassagePainter.h"

#include "surface/ParagraphShape.h"
#include "surface/PassageSegments.h"
#include "surface/ReaderMetrics.h"

#include <QPainter>
#include <QPainterPath>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

/// A selected line break is drawn this wide, so that a selected blank line is seen.
constexpr qreal selectedBreakWidth = 4;

QColor withAlpha(QColor color, double alpha)
{
    color.setAlphaF(float(alpha));
    return color;
}

/// A rectangle whose upper corners may be round.
QPainterPath bandShape(const QRectF &band, bool isLeftRound, bool isRightRound)
{
    const qreal radius = std::min(ReaderMetrics::bandRadius, band.width());
    const qreal diameter = 2 * radius;
    QPainterPath path(band.bottomLeft());
    if (isLeftRound)
        path.arcTo(band.left(), band.top(), diameter, diameter, 180, -90);
    else
        path.lineTo(band.topLeft());
    if (isRightRound)
        path.arcTo(band.right() - diameter, band.top(), diameter, diameter, 90, -90);
    else
        path.lineTo(band.topRight());
    path.lineTo(band.bottomRight());
    path.closeSubpath();
    return path;
}

} // namespace

PassagePainter::PassagePainter(
    QPainter &painter, const TextMarks &marks, const QAbstractTextDocumentLayout::PaintContext &context)
    : m_painter(painter),
      m_marks(marks),
      m_context(context),
      m_toDevice(painter.deviceTransform()),
      m_fromDevice(m_toDevice.inverted())
{
    if (context.selections.isEmpty())
        return;
    const auto &selection = context.selections.last();
    m_selectionStart = selection.cursor.selectionStart();
    m_selectionEnd = selection.cursor.selectionEnd();
    m_selectionFormat = selection.format;
}

void PassagePainter::paint(const QTextBlock &textBlock, QPointF origin)
{
    const int start = textBlock.position();
    const Block block{*textBlock.layout(), ParagraphShape(textBlock), origin, start, start + textBlock.length()};
    const std::vector<Line> lines = visibleLines(block);
    m_painter.save();
    m_painter.setRenderHint(QPainter::Antialiasing);
    for (const Line &line : lines) {
        paintBands(block, line);
        paintSelection(block, line);
    }
    paintText(block);
    for (const Line &line : lines) {
        paintUnderlines(block, line);
        paintFindMatches(block, line);
    }
    paintCaret(block);
    m_painter.restore();
}

PassagePainter::Extent PassagePainter::bandExtent(const QTextLine &line)
{
    return {line.y() - ReaderMetrics::bandAboveAscent,
        line.y() + line.ascent() + line.descent() + ReaderMetrics::bandBelowDescent};
}

std::vector<PassagePainter::Line> PassagePainter::visibleLines(const Block &block) const
{
    const qreal top = m_context.clip.top() - block.origin.y();
    const qreal bottom = m_context.clip.bottom() - block.origin.y();
    const int first =
        firstLineNot(block.layout, [top](const QTextLine &line) { return bandExtent(line).bottom + 1 < top; });
    std::vector<Line> lines;
    for (int number = first; number < block.layout.lineCount(); ++number) {
        const QTextLine line = block.layout.lineAt(number);
        if (bandExtent(line).top - 1 > bottom)
            break;
        const int start = block.start + line.textStart();
        lines.push_back({line, start, start + line.textLength()});
    }
    return lines;
}

QRectF PassagePainter::snapped(const QRectF &rectangle) const
{
    const QRectF device = m_toDevice.mapRect(rectangle);
    const QPointF topLeft(std::round(device.left()), std::round(device.top()));
    const QPointF bottomRight(std::round(device.right()), std::round(device.bottom()));
    return m_fromDevice.mapRect(QRectF(topLeft, bottomRight));
}

std::vector<QRectF> PassagePainter::rectangles(const Block &block, const Line &line, int start, int end) const
{
    const Extent extent = bandExtent(line.text);
    std::vector<QRectF> result;
    for (const auto &[left, right] : block.shape.spans(line.text, start - block.start, end - block.start)) {
        const QRectF rectangle(left, extent.top, right - left, extent.bottom - extent.top);
        result.push_back(snapped(rectangle.translated(block.origin)));
    }
    return result;
}

bool PassagePainter::isBanded(int position) const
{
    const bool isFlashed = m_marks.flash && position >= m_marks.flash->start && position < m_marks.flash->end;
    return isFlashed || m_marks.passages.covers(position);
}

void PassagePainter::paintBands(const Block &block, const Line &line)
{
    const TextMarks::Flash flash = m_marks.flash.value_or(TextMarks::Flash{line.end, line.end, {}});
    for (const PassageSegment &segment : m_marks.passages.within(line.start, line.end)) {
        const QColor color = withAlpha(QColor(segment.color), ReaderMetrics::bandAlpha);
        const int start = std::max(segment.start, line.start);
        const int end = std::min(segment.end, line.end);
        paintBand(block, line, start, std::min(end, flash.start), color);
        paintBand(block, line, std::max(start, flash.end), end, color);
    }
    paintBand(block, line, std::max(flash.start, line.start), std::min(flash.end, line.end),
        withAlpha(flash.color, ReaderMetrics::flashAlpha));
}

void PassagePainter::paintBand(const Block &block, const Line &line, int start, int end, const QColor &color)
{
    if (start >= end)
        return;
    const bool isLeftRound = !block.shape.isMixed() && !isBanded(start - 1);
    const bool isRightRound = !block.shape.isMixed() && !isBanded(end);
    for (const QRectF &band : rectangles(block, line, start, end))
        m_painter.fillPath(bandShape(band, isLeftRound, isRightRound), color);
}

void PassagePainter::paintSelection(const Block &block, const Line &line)
{
    if (m_selectionStart >= m_selectionEnd || m_selectionEnd <= block.start || m_selectionStart >= block.end)
        return;
    const QBrush brush = m_selectionFormat.background();
    for (const QRectF &rectangle : rectangles(block, line, m_selectionStart, m_selectionEnd))
        m_painter.fillRect(rectangle, brush);

    if (line.end + 1 != block.end || m_selectionEnd < block.end) // only the block's last line has a line break
        return;
    const Extent extent = bandExtent(line.text);
    const bool isRightToLeft = block.layout.textOption().alignment().testFlag(Qt::AlignRight);
    const qreal edge = isRightToLeft ? line.text.naturalTextRect().left() - selectedBreakWidth
                                     : line.text.cursorToX(line.end - block.start);
    const QRectF stub(edge, extent.top, selectedBreakWidth, extent.bottom - extent.top);
    m_painter.fillRect(snapped(stub.translated(block.origin)), brush);
}

void PassagePainter::paintText(const Block &block)
{
    const QColor color = m_context.palette.color(QPalette::Text);
    m_painter.setPen(color);
    QList<QTextLayout::FormatRange> formats;
    const int start = std::max(m_selectionStart, block.start) - block.start;
    const int end = std::min(m_selectionEnd, block.end) - block.start;
    const QBrush selectedText = m_selectionFormat.foreground();
    if (start < end && selectedText.style() != Qt::NoBrush && selectedText.color() != color) {
        QTextLayout::FormatRange format{start, end - start, {}};
        format.format.setForeground(selectedText);
        formats.append(format);
    }
    block.layout.draw(&m_painter, block.origin, formats, m_context.clip);
}

void PassagePainter::paintUnderlines(const Block &block, const Line &line)
{
    const qreal devicePixel = m_fromDevice.mapRect(QRectF(0, 0, 1, 1)).height();
    const qreal thickness = std::max(ReaderMetrics::underlineThickness, devicePixel);
    for (const PassageSegment &segment : m_marks.passages.within(line.start, line.end)) {
        const QColor color = withAlpha(QColor(segment.color), ReaderMetrics::underlineAlpha);
        for (QRectF rectangle : rectangles(block, line, segment.start, segment.end)) {
            rectangle.setTop(rectangle.bottom() - thickness);
            m_painter.fillRect(rectangle, color);
        }
    }
}

void PassagePainter::paintFindMatches(const Block &block, const Line &line)
{
    const auto &matches = m_marks.findMatches;
    m_painter.setPen(QPen(m_context.palette.color(QPalette::Link), 1));
    m_painter.setBrush(Qt::NoBrush);
    for (auto match = std::ranges::upper_bound(matches, line.start, {}, &TextRange::end);
         match != matches.end() && match->location < line.end; ++match) {
        if (match->location == m_selectionStart && match->end() == m_selectionEnd)
            continue; // the selection marks it already
        for (const QRectF &rectangle : rectangles(block, line, int(match->location), int(match->end())))
            m_painter.drawRoundedRect(
                rectangle.adjusted(-0.5, -0.5, 0.5, 0.5), ReaderMetrics::bandRadius, ReaderMetrics::bandRadius);
    }
}

void PassagePainter::paintCaret(const Block &block)
{
    if (!m_marks.caret || *m_marks.caret < block.start || *m_marks.caret >= block.end)
        return;
    m_painter.setRenderHint(QPainter::Antialiasing, false);
    m_painter.setPen(m_context.palette.color(QPalette::Text));
    block.layout.drawCursor(&m_painter, block.origin, *m_marks.caret - block.start);
}
