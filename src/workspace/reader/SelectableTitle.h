#pragma once

#include <QTextEdit>

/// A title whose text can be selected and copied. It takes as many lines as its width asks for, breaks words that are
/// longer than a line, and scrolls beyond a few lines.
class SelectableTitle final : public QTextEdit {
    Q_OBJECT

public:
    explicit SelectableTitle(const QFont &font, QWidget *parent = nullptr);

    /// Keeps what is selected if the title is the same.
    void setTitle(const QString &title);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void focusOutEvent(QFocusEvent *event) override;

private:
    QString m_title; ///< which comes back from the editor with other blanks
};
