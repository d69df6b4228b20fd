
#include "surface/CodingTextView.h"
#include "surface/DisplayText.h"

#include <QAccessible>
#include <QAccessibleTextInterface>
#include <QAccessibleWidget>
#include <QTextBoundaryFinder>
#include <QTextCursor>

#include <algorithm>

namespace {

using Boundary = QAccessible::TextBoundaryType;

/// A word or sentence is cut at this distance: a paragraph may be the whole document.
constexpr qint64 maxBoundaryDistance = 2'000;

/// The word, sentence or character of the text around a position.
TextRange boundedUnit(const QString &text, qint64 position, QTextBoundaryFinder::BoundaryType type)
{
    const TextRange paragraph = DisplayText::paragraphAt(text, position);
    const qint64 start = std::max(paragraph.location, position - maxBoundaryDistance);
    const qint64 end = std::min(paragraph.end(), position + maxBoundaryDistance);
    QTextBoundaryFinder finder(type, text.mid(start, end - start));
    finder.setPosition(position - start);
    const qint64 unitStart =
        finder.isAtBoundary() ? position : start + std::max<qint64>(finder.toPreviousBoundary(), 0);
    finder.setPosition(position - start);
    const qsizetype next = finder.toNextBoundary();
    const qint64 unitEnd = next < 0 ? end : start + next;
    return {unitStart, unitEnd - unitStart};
}

/// Offsets are UTF-16 code units of the given text; -1 is the text's length, -2 the caret. Answers for characters that
/// were never laid out, too.
class AccessibleCodingText final : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit AccessibleCodingText(CodingTextView &view)
        : QAccessibleWidget(&view, QAccessible::EditableText),
          m_view(view)
    {
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        state.multiLine = true;
        state.selectableText = true;
        return state;
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? m_view.text() : QAccessibleWidget::text(kind);
    }

    void selection(int selectionIndex, int *startOffset, int *endOffset) const override
    {
        const bool isThere = selectionIndex < selectionCount();
        (void)answer(isThere ? m_view.selection() : TextRange(), startOffset, endOffset);
    }
    [[nodiscard]] int selectionCount() const override { return m_view.selection().length > 0 ? 1 : 0; }
    void addSelection(int startOffset, int endOffset) override { setSelection(0, startOffset, endOffset); }
    void removeSelection(int selectionIndex) override
    {
        if (selectionIndex == 0)
            m_view.select({m_view.selection().location, 0});
    }
    void setSelection(int selectionIndex, int startOffset, int endOffset) override
    {
        if (selectionIndex == 0)
            m_view.select(between(startOffset, endOffset));
    }
    [[nodiscard]] int cursorPosition() const override
    {
        return int(DisplayText::outsideLineBreak(m_view.text(), m_view.textCursor().position()));
    }
    void setCursorPosition(int position) override
    {
        const TextRange caret{resolved(position), 0};
        m_view.select(caret);
        m_view.scrollTo(caret);
    }

    [[nodiscard]] QString text(int startOffset, int endOffset) const override
    {
        const TextRange range = between(startOffset, endOffset);
        return m_view.text().mid(range.location, range.length);
    }
    [[nodiscard]] QString textBeforeOffset(int offset, Boundary type, int *startOffset, int *endOffset) const override
    {
        const TextRange unit = unitAt(resolved(offset), type);
        const bool isFirst = unit.location == 0;
        return answer(isFirst ? TextRange() : unitAt(unit.location - 1, type), startOffset, endOffset);
    }
    [[nodiscard]] QString textAfterOffset(int offset, Boundary type, int *startOffset, int *endOffset) const override
    {
        const TextRange unit = unitAt(resolved(offset), type);
        const bool isLast = unit.end() == characterCount();
        return answer(isLast ? TextRange{unit.end(), 0} : unitAt(unit.end(), type), startOffset, endOffset);
    }
    [[nodiscard]] QString textAtOffset(int offset, Boundary type, int *startOffset, int *endOffset) const override
    {
        return answer(unitAt(resolved(offset), type), startOffset, endOffset);
    }
    [[nodiscard]] int characterCount() const override { return int(m_view.text().size()); }

    [[nodiscard]] QRect characterRect(int offset) const override
    {
        if (offset < 0 || offset > characterCount())
            return {};
        const QRect rectangle = m_view.characterRectangle(offset);
        return {m_view.viewport()->mapToGlobal(rectangle.topLeft()), rectangle.size()};
    }
    [[nodiscard]] int offsetAtPoint(const QPoint &point) const override
    {
        const QPoint inViewport = m_view.viewport()->mapFromGlobal(point);
        return m_view.viewport()->rect().contains(inViewport) ? int(m_view.characterAt(inViewport)) : -1;
    }
    void scrollToSubstring(int startIndex, int endIndex) override { m_view.scrollTo(between(startIndex, endIndex)); }
    [[nodiscard]] QString attributes(int, int *startOffset, int *endOffset) const override
    {
        (void)answer({0, characterCount()}, startOffset, endOffset);
        return {};
    }

private:
    [[nodiscard]] qint64 resolved(int offset) const
    {
        if (offset == -2)
            return cursorPosition();
        return offset == -1 ? characterCount() : std::clamp(offset, 0, characterCount());
    }
    [[nodiscard]] TextRange between(int oneOffset, int otherOffset) const
    {
        const auto [start, end] = std::minmax({resolved(oneOffset), resolved(otherOffset)});
        return {start, end - start};
    }
    [[nodiscard]] TextRange unitAt(qint64 position, Boundary type) const
    {
        const QString &text = m_view.text();
        switch (type) {
        case QAccessible::CharBoundary:
            return boundedUnit(text, position, QTextBoundaryFinder::Grapheme);
        case QAccessible::WordBoundary:
            return boundedUnit(text, position, QTextBoundaryFinder::Word);
        case QAccessible::SentenceBoundary:
            return boundedUnit(text, position, QTextBoundaryFinder::Sentence);
        case QAccessible::LineBoundary:
            return m_view.lineAt(position);
        case QAccessible::ParagraphBoundary:
            return DisplayText::paragraphAt(text, position);
        case QAccessible::NoBoundary:
            break;
        }
        return {0, text.size()};
    }
    QString answer(TextRange range, int *startOffset, int *endOffset) const
    {
        *startOffset = int(range.location);
        *endOffset = int(range.end());
        return m_view.text().mid(range.location, range.length);
    }

    CodingTextView &m_view;
};

QAccessibleInterface *makeInterface(const QString &className, QObject *object)
{
    if (className != QLatin1StringView(CodingTextView::staticMetaObject.className()))
        return nullptr;
    auto *view = qobject_cast<CodingTextView *>(object);
    return view ? new AccessibleCodingText(*view) : nullptr;
}

} // namespace

void installAccessibleCodingText()
{
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(&makeInterface);
        return true;
    }();
}
