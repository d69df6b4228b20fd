#pragma once

#include <QWidget>

class PlainButton;
class QTextEdit;

/// A memo below a heading: a quiet button while there is none, and an editor once there is one or the user opens it.
/// Every change that the user makes is committed at once.
class MemoBar final : public QWidget {
    Q_OBJECT

public:
    /// How far icon and label stand from the bar's leading edge, in logical pixels.
    static constexpr int labelInset = 8;

    /// `placeholder` labels the button; without the ellipsis at its end it is the editor's accessible name.
    explicit MemoBar(const QString &placeholder, QWidget *parent = nullptr);

    /// As it was set or typed, unchanged.
    [[nodiscard]] const QString &text() const { return m_text; }

    /// Shows the memo of something else, or another memo. Commits nothing, and clears the steps of undoing.
    void setText(const QString &text);
    /// Commits once more, with the word that an input method has in the making. Call it before the memo of something
    /// else is shown.
    void finish();
    /// Moves the editor's leading edge in, in logical pixels, so that it can meet the label.
    void setEditorInset(int inset);

Q_SIGNALS:
    /// After each change by the user, and once more on `finish` and when the bar is hidden.
    void committed(const QString &text);

protected:
    void hideEvent(QHideEvent *event) override;

private:
    [[nodiscard]] QWidget *makeEditor();
    [[nodiscard]] bool hasContent() const;
    [[nodiscard]] QString composedWord() const;
    void expand();
    void commit();
    void takeText();
    void keepAsStored(const QString &units, const QString &text);
    void writeIntoEditor();
    enum class Pace { atOnce, fading };
    void showFitting(Pace pace);

    QString m_text;
    bool m_isFinishing = false;
    bool m_isExpanded = false; ///< from when the user opens the editor until the bar disappears
    PlainButton *m_button;
    QTextEdit *m_edit = nullptr;
    QWidget *m_editor;
};
