#include "surface/CodingTextView.h"

#include "platform/UnpairedSurrogates.h"
#include "surface/DisplayText.h"
#include "surface/LazyTextLayout.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QTimerEvent>

#include <algorithm>
#include <utility>

// Selection by keys, mouse and program, find matches, and copying.

namespace {

constexpr int scrollingStrip = 8; // pixels
constexpr int dragInterval = 50; // milliseconds

} // namespace

TextRange CodingTextView::selection() const
{
    const QTextCursor cursor = textCursor();
    const qint64 start = DisplayText::outsideLineBreak(m_text, cursor.selectionStart());
    const qint64 end = DisplayText::outsideLineBreak(m_text, cursor.selectionEnd());
    return {start, end - start};
}

TextRange CodingTextView::cut(TextRange range) const
{
    const qint64 length = m_text.size();
    const qint64 start = std::clamp<qint64>(range.location, 0, length);
    return {start, std::clamp<qint64>(range.length, 0, length - start)};
}

void CodingTextView::select(TextRange range)
{
    const TextRange inside = cut(range);
    QTextCursor cursor(document());
    cursor.setPosition(int(inside.location));
    cursor.setPosition(int(inside.end()), QTextCursor::KeepAnchor);
    keepingPlace([&] { setTextCursor(cursor); }); // setTextCursor alone would scroll
}

void CodingTextView::noticeSelection()
{
    if (m_isApplying)
        return;
    const TextRange current = selection();
    if (current == m_reportedSelection)
        return;
    const TextRange former = std::exchange(m_reportedSelection, current);
    if (former.overlaps(current)) { // what belongs to both looks the same as before
        const auto [firstStart, lastStart] = std::minmax({former.location, current.location});
        const auto [firstEnd, lastEnd] = std::minmax({former.end(), current.end()});
        repaint({firstStart, lastStart - firstStart});
        repaint({firstEnd, lastEnd - firstEnd});
    } else {
        repaint(former);
        repaint(current);
    }
    Q_EMIT selectedRangeChanged(current);
}

QMimeData *CodingTextView::createMimeDataFromSelection() const
{
    const TextRange range = selection();
    auto *copied = new QMimeData;
    copied->setText(replaceUnpairedSurrogates(m_text.mid(range.location, range.length)));
    return copied;
}

void CodingTextView::keyPressEvent(QKeyEvent *event)
{
    const TextRange selected = selection();
    if (event->matches(QKeySequence::Cancel) && selected.length >= 1) {
        select({selected.location, 0});
        event->accept();
        return;
    }
    const QTextCursor before = textCursor();
    QTextEdit::keyPressEvent(event);
    const QTextCursor after = textCursor();
    if (before.position() == after.position() && before.anchor() == after.anchor())
        return;
    showCaret(true);
    if (!event->matches(QKeySequence::SelectAll))
        followCaret();
}

/// The base class has scrolled by estimated heights; this scrolls by exact ones. The page's margins count as parts of
/// the first and the last line.
void CodingTextView::followCaret()
{
    const int position = textCursor().position();
    const int height = viewport()->height();
    const QTextLine line = layout().lineAt(position);
    const QTextBlock block = document()->findBlock(position);
    const bool isFirstLine = !block.previous().isValid() && line.lineNumber() == 0;
    const bool isLastLine = !block.next().isValid() && line.lineNumber() + 1 == block.layout()->lineCount();
    keepingPlace([&] {
        if (isFirstLine)
            m_place->moveToStart();
        else if (isLastLine)
            m_place->moveToEnd(height);
        else
            m_place->show(position, position, height);
    });
}

void CodingTextView::showCaret(bool isShown)
{
    const int position = textCursor().position();
    m_showsCaret = isShown;
    for (const int touched : {m_marks.caret.value_or(position), position})
        repaint({touched, 1});
}

void CodingTextView::focusInEvent(QFocusEvent *event)
{
    QTextEdit::focusInEvent(event);
    const auto reason = event->reason();
    const bool isByKey =
        reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
    showCaret(isByKey || m_showsCaret);
}

void CodingTextView::focusOutEvent(QFocusEvent *event)
{
    QTextEdit::focusOutEvent(event);
    showCaret(m_showsCaret);
}

void CodingTextView::mousePressEvent(QMouseEvent *event)
{
    const QTextCursor before = textCursor();
    QTextEdit::mousePressEvent(event);
    showCaret(false);
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier)
        selectWholeParagraph(before);
}

// Dragging. The base class scrolls only while the pointer is outside the view, where it can't get if the view ends at
// the screen's edge. So a strip along the upper and the lower edge scrolls as well.

void CodingTextView::mouseMoveEvent(QMouseEvent *event)
{
    QTextEdit::mouseMoveEvent(event);
    m_dragPoint = event->position().toPoint();
    if (!event->buttons().testFlag(Qt::LeftButton) || !scrollsAt(m_dragPoint))
        m_dragTimer.stop();
    else if (!m_dragTimer.isActive())
        m_dragTimer.start(dragInterval, this);
}

void CodingTextView::mouseReleaseEvent(QMouseEvent *event)
{
    m_dragTimer.stop();
    QTextEdit::mouseReleaseEvent(event);
}

bool CodingTextView::scrollsAt(QPoint point) const
{
    const QRect inside = viewport()->rect();
    return inside.contains(point) && !inside.adjusted(0, scrollingStrip, 0, -scrollingStrip).contains(point);
}

void CodingTextView::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_dragTimer.timerId())
        return QTextEdit::timerEvent(event);
    const bool isUpward = m_dragPoint.y() < viewport()->rect().center().y();
    verticalScrollBar()->triggerAction(
        isUpward ? QAbstractSlider::SliderSingleStepSub : QAbstractSlider::SliderSingleStepAdd);
    QMouseEvent move(QEvent::MouseMove, m_dragPoint, viewport()->mapToGlobal(m_dragPoint), Qt::LeftButton,
        Qt::LeftButton, Qt::NoModifier);
    mouseMoveEvent(&move); // the selection reaches to what is under the pointer now
}

/// A third click selects a block, which may be only a piece of a long paragraph.
void CodingTextView::selectWholeParagraph(const QTextCursor &before)
{
    const QTextCursor cursor = textCursor();
    if (!cursor.hasSelection() || (cursor == before && cursor.anchor() == before.anchor()))
        return;
    const QTextBlock block = document()->findBlock(cursor.selectionStart());
    const int blockEnd = std::min(block.position() + block.length(), document()->characterCount() - 1);
    if (cursor.selectionStart() != block.position() || cursor.selectionEnd() != blockEnd)
        return;
    select(DisplayText::paragraphAt(m_text, block.position()));
}

// Find matches

void CodingTextView::setFindMatches(std::vector<TextRange> matches)
{
    std::erase_if(matches, [this](TextRange match) { return match.length < 1 || cut(match) != match; });
    std::ranges::sort(matches, {}, &TextRange::location);
    const auto kept = std::unique(
        matches.begin(), matches.end(), [](TextRange match, TextRange next) { return match.overlaps(next); });
    matches.erase(kept, matches.end());
    m_marks.findMatches = std::move(matches);
    viewport()->update();
}

void CodingTextView::selectFindMatch(size_t index)
{
    if (index >= m_marks.findMatches.size())
        return;
    const TextRange match = m_marks.findMatches[index];
    scrollTo(match);
    select(match);
}
