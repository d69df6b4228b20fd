#include "surface/CodingTextView.h"

#include "surface/LazyTextLayout.h"
#include "surface/ParagraphShape.h"
#include "surface/PassagePainter.h"

#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <limits>

// Keeps the scroll bar, whose range is estimated, in step with the exact place in the text.

void CodingTextView::keepingPlace(const std::function<void()> &change)
{
    if (m_isSettling) {
        change();
        m_isUnsettled = true;
        return;
    }
    {
        const QScopedValueRollback settling(m_isSettling, true);
        change();
    }
    settle();
}

void CodingTextView::settle()
{
    if (m_isSettling)
        return;
    constexpr int maxRounds = 4; // a scroll bar that appears or goes changes the width, and with it all heights
    const QScopedValueRollback settling(m_isSettling, true);
    for (int round = 0; round < maxRounds; ++round) {
        m_isUnsettled = false;
        m_place->layOutView(viewport()->height());
        layout().announceSize();
        if (!m_isUnsettled)
            break;
    }
    showPlace();
}

/// Sets the scroll bar only: the text in view stays, while its distance from the document's top is known better now.
void CodingTextView::showPlace()
{
    QScrollBar *bar = verticalScrollBar();
    const int value = int(std::min<qint64>(m_place->scrollValue(), std::numeric_limits<int>::max()));
    const QSignalBlocker silent(bar);
    if (value > bar->maximum())
        bar->setMaximum(value);
    bar->setValue(value);
    m_scrollValue = value;
}

void CodingTextView::noticeHeights()
{
    if (m_isSettling)
        return;
    showPlace();
    m_isUnsettled = true; // the next paint sets the scroll bar's range
    viewport()->update();
}

void CodingTextView::scrollContentsBy(int, int)
{
    if (m_isSettling)
        return;
    const QScrollBar *bar = verticalScrollBar();
    const int height = viewport()->height();
    const int value = bar->value();
    const qint64 moved = qint64(value) - m_scrollValue;
    keepingPlace([&] {
        if (value <= bar->minimum())
            m_place->moveToStart();
        else if (value >= bar->maximum())
            m_place->moveToEnd(height);
        else if (std::abs(moved) <= 2 * qint64(height))
            m_place->moveBy(int(moved));
        else
            m_place->moveTo(value);
    });
    viewport()->update();
}

void CodingTextView::scrollTo(TextRange range)
{
    const TextRange inside = cut(range);
    const int first = int(inside.location);
    const int last = int(std::max(inside.location, inside.end() - 1));
    const int before = m_scrollValue;
    keepingPlace([&] { m_place->show(first, last, viewport()->height()); });
    if (m_scrollValue != before)
        viewport()->update();
}

void CodingTextView::resizeEvent(QResizeEvent *event)
{
    keepingPlace([&] { QTextEdit::resizeEvent(event); });
    viewport()->update();
}

void CodingTextView::changeEvent(QEvent *event)
{
    keepingPlace([&] { QTextEdit::changeEvent(event); });
}

void CodingTextView::paintEvent(QPaintEvent *event)
{
    if (m_isUnsettled)
        settle();
    m_marks.caret.reset();
    if (m_showsCaret && hasFocus())
        m_marks.caret = textCursor().position();
    QTextEdit::paintEvent(event);
}

void CodingTextView::wheelEvent(QWheelEvent *event)
{
    // QTextEdit would zoom on Ctrl.
    QAbstractScrollArea::wheelEvent(event); // NOLINT(bugprone-parent-virtual-call)
}

QRect CodingTextView::characterRectangle(qint64 position) const
{
    const int inside = int(std::clamp<qint64>(position, 0, m_text.size()));
    const QTextLine line = layout().lineAt(inside);
    const QTextBlock block = document()->findBlock(inside);
    const ParagraphShape shape(block);
    const int inBlock = inside - block.position();
    const int next = std::max(inBlock + 1, block.layout()->nextCursorPosition(inBlock));
    const auto spans = shape.spans(line, inBlock, next);
    const qreal caret = line.cursorToX(inBlock);
    const ParagraphShape::Span span = spans.empty() ? ParagraphShape::Span{caret, caret} : spans.front();
    const QRectF rectangle(span.left, line.y(), span.right - span.left, line.height());
    const QPoint corner(layout().columnLeft(), int(layout().top(block.blockNumber()) - m_scrollValue));
    return rectangle.translated(corner).toAlignedRect();
}

qint64 CodingTextView::characterAt(QPoint point) const
{
    return std::min<qint64>(layout().characterAt(point + QPoint(0, m_scrollValue)), m_text.size());
}

TextRange CodingTextView::lineAt(qint64 position) const
{
    const int inside = int(std::clamp<qint64>(position, 0, m_text.size()));
    const QTextLine line = layout().lineAt(inside);
    const QTextBlock block = document()->findBlock(inside);
    const qint64 start = block.position() + line.textStart();
    const bool endsBlock = line.lineNumber() + 1 == block.layout()->lineCount();
    const qint64 end = endsBlock ? block.position() + block.length() : start + line.textLength();
    return cut({start, end - start});
}

TextRange CodingTextView::visibleStretch() const
{
    const int height = viewport()->height();
    const QTextBlock first = document()->findBlockByNumber(layout().blockAt(m_scrollValue));
    const QTextBlock last = document()->findBlockByNumber(layout().blockAt(qint64(m_scrollValue) + height));
    return {first.position(), last.position() + last.length() - first.position()};
}

/// Repaints the lines of the range that are in view, with one character more on each side: a change may turn the round
/// corner of a neighbouring passage into a square one.
void CodingTextView::repaint(TextRange range)
{
    const TextRange view = visibleStretch();
    const qint64 first = std::max({range.location - 1, view.location, qint64(0)});
    const qint64 last = std::min({range.end(), view.end() - 1, qint64(m_text.size())});
    if (range.length < 1 || first > last)
        return;
    const auto edge = [this](qint64 position) {
        const auto extent = PassagePainter::bandExtent(layout().lineAt(int(position)));
        const qreal top = qreal(layout().top(document()->findBlock(int(position)).blockNumber()) - m_scrollValue);
        return std::pair(int(std::floor(top + extent.top)) - 1, int(std::ceil(top + extent.bottom)) + 1);
    };
    const int top = edge(first).first;
    const int bottom = edge(last).second;
    viewport()->update(QRect(0, top, viewport()->width(), bottom - top));
}
