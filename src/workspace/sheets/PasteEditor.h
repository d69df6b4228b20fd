#pragma once

#include "kit/theme/FocusRing.h"

#include <QPlainTextEdit>

/// An editor for a text of any length: it lays out only the part that is seen.
class PasteEditor final : public QPlainTextEdit, public HasFocusOutline {
    Q_OBJECT

public:
    explicit PasteEditor(QWidget *parent = nullptr);

    /// The text as it was typed or pasted, with a line feed at the end of each paragraph but the last.
    [[nodiscard]] QString text() const;
    /// Whether the text is empty or nothing but blanks and line breaks.
    [[nodiscard]] bool isBlank() const;
    [[nodiscard]] FocusOutline focusOutline() const override;
};
