#pragma once

#include "records/TextRange.h"

#include <QAccessibleTextInterface>
#include <QAccessibleWidget>

class CodingTextView;

/// The text surface as assistive technologies read it: the document's own text, and answers for every character,
/// whether or not it was ever laid out. Offsets are UTF-16 code units; -1 is the text's length, -2 the caret.
class AccessibleCodingText final : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    /// Makes Qt ask this class about every `CodingTextView` from now on.
    static void install();

    explicit AccessibleCodingText(CodingTextView &view);

    [[nodiscard]] void *interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;

    void selection(int selectionIndex, int *startOffset, int *endOffset) const override;
    [[nodiscard]] int selectionCount() const override;
    void addSelection(int startOffset, int endOffset) override;
    void removeSelection(int selectionIndex) override;
    void setSelection(int selectionIndex, int startOffset, int endOffset) override;
    [[nodiscard]] int cursorPosition() const override;
    void setCursorPosition(int position) override;

    [[nodiscard]] QString text(int startOffset, int endOffset) const override;
    [[nodiscard]] QString textBeforeOffset(
        int offset, QAccessible::TextBoundaryType type, int *startOffset, int *endOffset) const override;
    [[nodiscard]] QString textAfterOffset(
        int offset, QAccessible::TextBoundaryType type, int *startOffset, int *endOffset) const override;
    [[nodiscard]] QString textAtOffset(
        int offset, QAccessible::TextBoundaryType type, int *startOffset, int *endOffset) const override;
    [[nodiscard]] int characterCount() const override;

    [[nodiscard]] QRect characterRect(int offset) const override;
    [[nodiscard]] int offsetAtPoint(const QPoint &point) const override;
    void scrollToSubstring(int startIndex, int endIndex) override;
    [[nodiscard]] QString attributes(int offset, int *startOffset, int *endOffset) const override;

private:
    [[nodiscard]] CodingTextView &view() const;
    [[nodiscard]] qint64 resolved(int offset) const;
    [[nodiscard]] TextRange unitAt(qint64 position, QAccessible::TextBoundaryType type) const;
    QString answer(TextRange range, int *startOffset, int *endOffset) const;
};
