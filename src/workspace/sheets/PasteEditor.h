#pragma once

#include "kit/theme/FocusRing.h"

#include <QPlainTextEdit>

/// Takes a text of any length; lays out only the part that is seen.
class PasteEditor final : public QPlainTextEdit, public HasFocusOutline {
    Q_OBJECT

public:
    explicit PasteEditor(QWidget *parent = nullptr);

    /// As it was typed or pasted, but with every end of a paragraph as a line feed.
    [[nodiscard]] QString text() const;
    /// Whether there is nothing but blanks and line breaks.
    [[nodiscard]] bool isBlank() const;
    [[nodiscard]] FocusOutline focusOutline() const override;
};
