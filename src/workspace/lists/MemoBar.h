#pragma once

#include <QWidget>

class PlainButton;
class QTextEdit;

/// A memo below a heading: a quiet button while there is none, an editor once there is one or it is wanted. Every
/// change that the user makes is committed at once.
class MemoBar final : public QWidget {
    Q_OBJECT

public:
    /// How far icon and label stand from the bar's leading edge, in logical pixels.
    static constexpr int labelInset = 8;

    /// `placeholder` labels the button.
    explicit MemoBar(const QString &placeholder, QWidget *parent = nullptr);

    /// As it was set or typed, to the last unit.
    [[nodiscard]] const QString &text() const { return m_text; }

    /// Shows the memo of another thing, or another memo. Commits nothing; what was typed before can't be undone into
    /// it.
    void setText(const QString &text);
    /// Commits once more, with the word that is being composed: before the memo of another thing is shown, while it's
    /// still known whose memo this is.
    void finish();
    /// Moves the editor's leading edge in, in logical pixels, so that it can meet the label.
    void setEditorInset(int inset);

Q_SIGNALS:
    /// After each change by the user, and once more when the bar is finished with or disappears.
    void committed(const QString &text);

protected:
    void hideEvent(QHideEvent *event) override;

private:
    [[nodiscard]] QWidget *makeEditor();
    [[nodiscard]] bool hasContent() const;
    [[nodiscard]] bool isComposing() const;
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
