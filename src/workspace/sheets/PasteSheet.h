#pragma once

#include "kit/theme/FocusRing.h"
#include "workspace/sheets/FormSheet.h"

#include <QPlainTextEdit>

class LibraryStore;
class QLineEdit;

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

/// Asks for a title and a text and makes a document of them.
class PasteSheet final : public FormSheet {
    Q_OBJECT

public:
    PasteSheet(LibraryStore &store, QWidget &window);

private:
    void act() override;

    LibraryStore &m_store;
    QLineEdit *m_title;
    PasteEditor *m_text;
};
