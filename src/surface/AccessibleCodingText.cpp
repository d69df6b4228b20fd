#include "surface/AccessibleCodingText.h"

#include "surface/CodingTextView.h"
#include "surface/DisplayText.h"

#include <QAccessible>
#include <QTextBoundaryFinder>
#include <QTextCursor>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Nothing is told from farther away than this: a paragraph may be the whole document.
constexpr qint64 farthestBoundary = 2'000;

QAccessibleInterface *makeInterface(const QString &className, QObject *object)
{
    if (className != QLatin1StringView(CodingTextView::staticMetaObject.className()))
        return nullptr;
    auto *view = qobject_cast<CodingTextView *>(object);
    return view ? new AccessibleCodingText(*view) : nullptr;
}

/// The word, sentence or character of the text around a position.
TextRange boundedUnit(const QString &text, qint64 position, QTextBoundaryFinder::BoundaryType type)
{
    const TextRange paragraph = DisplayText::paragraphAt(text, position);
    const qint64 start = std::max(paragraph.location, position - farthestBoundary);
    const qint64 end = std::min(paragraph.end(), position + farthestBoundary);
    QTextBoundaryFinder finder(type, text.mid(start, end - start));
    finder.setPosition(position - start);
    const qint64 unitStart =
        finder.isAtBoundary() ? position : start + std::max<qint64>(finder.toPreviousBoundary(), 0);
    finder.setPosition(position - start);
    const qsizetype next = finder.toNextBoundary();
    const qint64 unitEnd = next < 0 ? end : start + next;
    return {unitStart, unitEnd - unitStart};
}

} // namespace

void AccessibleCodingText::install()
{
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(&makeInterface);
        return true;
    }();
}

AccessibleCodingText::AccessibleCodingText(CodingTextView &view) : QAccessibleWidget(&view, QAccessible::EditableText)
{
}

CodingTextView &AccessibleCodingText::view() const
{
    return *static_cast<CodingTextView *>(widget());
}

void *AccessibleCodingText::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface *>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State AccessibleCodingText::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    state.multiLine = true;
    state.selectableText = true;
    return state;
}

QString AccessibleCodingText::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Value ? view().text() : QAccessibleWidget::text(kind);
}

void AccessibleCodingText::selection(int selectionIndex, int *startOffset, int *endOffset) const
{
    const TextRange selected = selectionIndex == 0 ? view().selection() : TextRange{};
    *startOffset = int(selected.length > 0 ? selected.location : 0);
    *endOffset = int(selected.length > 0 ? selected.end() : 0);
}

int AccessibleCodingText::selectionCount() const
{
    return view().selection().length > 0 ? 1 : 0;
}

void AccessibleCodingText::addSelection(int startOffset, int endOffset)
{
    setSelection(0, startOffset, endOffset);
}

void AccessibleCodingText::removeSelection(int selectionIndex)
{
    if (selectionIndex == 0)
        view().select({view().selection().location, 0});
}

void AccessibleCodingText::setSelection(int selectionIndex, int startOffset, int endOffset)
{
    if (selectionIndex != 0)
        return;
    const auto [start, end] = std::minmax({resolved(startOffset), resolved(endOffset)});
    view().select({start, end - start});
}

int AccessibleCodingText::cursorPosition() const
{
    return int(DisplayText::outsideLineBreak(view().text(), view().textCursor().position()));
}

void AccessibleCodingText::setCursorPosition(int position)
{
    view().select({resolved(position), 0});
    view().scrollTo({resolved(position), 0});
}

QString AccessibleCodingText::text(int startOffset, int endOffset) const
{
    const auto [start, end] = std::minmax({resolved(startOffset), resolved(endOffset)});
    return view().text().mid(start, end - start);
}

QString AccessibleCodingText::textBeforeOffset(
    int offset, QAccessible::TextBoundaryType type, int *startOffset, int *endOffset) const
{
    const TextRange unit = unitAt(resolved(offset), type);
    const bool isFirst = unit.location == 0;
    return answer(isFirst ? TextRange() : unitAt(unit.location - 1, type), startOffset, endOffset);
}

QString AccessibleCodingText::textAfterOffset(
    int offset, QAccessible::TextBoundaryType type, int *startOffset, int *endOffset) const
{
    const TextRange unit = unitAt(resolved(offset), type);
    const bool isLast = unit.end() == characterCount();
    return answer(isLast ? TextRange{unit.end(), 0} : unitAt(unit.end(), type), startOffset, endOffset);
}

QString AccessibleCodingText::textAtOffset(
    int offset, QAccessible::TextBoundaryType type, int *startOffset, int *endOffset) const
{
    return answer(unitAt(resolved(offset), type), startOffset, endOffset);
}

int AccessibleCodingText::characterCount() const
{
    return int(view().text().size());
}

QRect AccessibleCodingText::characterRect(int offset) const
{
    if (offset < 0 || offset > characterCount())
        return {};
    const QRect rectangle = view().characterRectangle(offset);
    return {view().viewport()->mapToGlobal(rectangle.topLeft()), rectangle.size()};
}

int AccessibleCodingText::offsetAtPoint(const QPoint &point) const
{
    const QPoint inViewport = view().viewport()->mapFromGlobal(point);
    return view().viewport()->rect().contains(inViewport) ? int(view().characterAt(inViewport)) : -1;
}

void AccessibleCodingText::scrollToSubstring(int startIndex, int endIndex)
{
    const auto [start, end] = std::minmax({resolved(startIndex), resolved(endIndex)});
    view().scrollTo({start, end - start});
}

QString AccessibleCodingText::attributes(int, int *startOffset, int *endOffset) const
{
    *startOffset = 0;
    *endOffset = characterCount();
    return {};
}

qint64 AccessibleCodingText::resolved(int offset) const
{
    if (offset == -2)
        return cursorPosition();
    return offset == -1 ? characterCount() : std::clamp(offset, 0, characterCount());
}

TextRange AccessibleCodingText::unitAt(qint64 position, QAccessible::TextBoundaryType type) const
{
    const QString &text = view().text();
    switch (type) {
    case QAccessible::CharBoundary:
        return boundedUnit(text, position, QTextBoundaryFinder::Grapheme);
    case QAccessible::WordBoundary:
        return boundedUnit(text, position, QTextBoundaryFinder::Word);
    case QAccessible::SentenceBoundary:
        return boundedUnit(text, position, QTextBoundaryFinder::Sentence);
    case QAccessible::LineBoundary:
        return view().lineAt(position);
    case QAccessible::ParagraphBoundary:
        return DisplayText::paragraphAt(text, position);
    case QAccessible::NoBoundary:
        break;
    }
    return {0, text.size()};
}

QString AccessibleCodingText::answer(TextRange range, int *startOffset, int *endOffset) const
{
    *startOffset = int(range.location);
    *endOffset = int(range.end());
    return view().text().mid(range.location, range.length);
}
