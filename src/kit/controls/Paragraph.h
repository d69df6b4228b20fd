#pragma once

#include "kit/theme/Symbols.h"

#include <QLabel>

class QTextLayout;

/// A wrapped text with a line distance of its own, which QLabel doesn't offer. Follows the look by itself.
class Paragraph final : public QLabel {
    Q_OBJECT

public:
    /// `lineHeight` in logical pixels is a minimum: lines whose letters are higher take more.
    Paragraph(const QString &text, const QFont &font, Symbols::Tint tint, int lineHeight, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

    void setText(const QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    /// Breaks the text into lines at most `width` wide and returns their height together.
    double layOut(QTextLayout &layout, double width) const;

    QString m_lines; ///< the text, with its line breaks as QTextLayout has them
    Symbols::Tint m_tint;
    int m_lineHeight;
};
