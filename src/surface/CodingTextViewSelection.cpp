#include "surface/CodingTextView.h"

#include "surface/DisplayText.h"
#include "surface/LazyTextLayout.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>
#include <utility>

// What is selected, by keys, mouse or program, and what is copied of it.

namespace {

/// Half a surrogate pair can't leave the program: no encoding of the clipboard has room for it.
QString copyable(QString text)
{
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar unit = std::as_const(text)[index];
        if (!unit.isSurrogate())
            continue;
        const bool isPair =
            unit.isHighSurrogate() && index + 1 < text.size() && std::as_const(text)[index + 1].isLowSurrogate();
        if (isPair)
            ++index;
        else
            text[index] = QChar(QChar::ReplacementCharacter);
    }
    return text;
}

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
    keepingPlace([&] { setTextCursor(cursor); }); // which would scroll to it
}

void CodingTextView::noticeSelection()
{
    if (m_isApplying)
        return;
    const TextRange current = selection();
    if (current == m_reportedSelection)
        return;
    const TextRange former = std::exchange(m_reportedSelection, current);
    if (former.overlaps(current)) {
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
    copied->setText(copyable(m_text.mid(range.location, range.length)));
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

/// Blocks far away were only estimated when the base class scrolled to them. The margins belong to the first and the
/// last line.
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
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason)
        showCaret(true);
    else
        showCaret(m_showsCaret);
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

/// A third click selects a block, which is only a piece of a paragraph where a long one was parted.
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
