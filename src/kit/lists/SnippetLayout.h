#pragma once

#include "records/TextRange.h"

#include <QFont>
#include <QTextLayout>

class QPainter;

/// The beginning of a passage in at most a few lines, the last of which ends in "…" where the passage goes on. Takes
/// only as much of the passage as those lines can hold, so its cost doesn't grow with it.
class SnippetLayout {
public:
    struct Style {
        QFont font;
        int width = 0; ///< logical pixels; at least one character stands in a line all the same
        int lineHeight = 18; ///< logical pixels, for every script; grows with the font
        int maxLineCount = 3;
        Qt::LayoutDirection direction = Qt::LeftToRight; ///< of the window
    };

    /// Every line break in `passage` is shown as a blank. Lines begin at the left, or at the right where the window or
    /// the passage runs from there. `emphasis`, in UTF-16 code units, gets `emphasisFormat`.
    SnippetLayout(const QString &passage, const Style &style, const TextRange &emphasis = {},
        QTextCharFormat emphasisFormat = {});

    [[nodiscard]] int lineCount() const { return m_layout.lineCount(); }
    [[nodiscard]] int height() const { return lineCount() * m_lineHeight; }
    /// What is shown, with the "…".
    [[nodiscard]] QString text() const { return m_layout.text(); }
    [[nodiscard]] bool isCut() const { return m_isCut; }

    /// In the painter's pen.
    void draw(QPainter &painter, const QPointF &topLeft) const;

    /// The height of each line of that style.
    [[nodiscard]] static int lineHeightOf(const Style &style);

private:
    void layOut();
    /// Shows the first `length` units and "…".
    void cutTo(qsizetype length);
    [[nodiscard]] qsizetype laidOutLength() const;

    Style m_style;
    TextRange m_emphasis;
    QTextCharFormat m_emphasisFormat;
    int m_lineHeight;
    bool m_isCut = false;
    QTextLayout m_layout;
};
