#pragma once

#include <QTextEdit>

/// A title whose text can be selected and copied. As high as its lines at the given width, breaks words that are longer
/// than a line, and scrolls beyond six lines.
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
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] int heightOf(int lineCount, int width) const;
    void adjustScrollBar();

    QString m_title; ///< as given: toPlainText() replaces no-break spaces
};
