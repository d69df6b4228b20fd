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
        int width = 0; ///< logical pixels; a line holds at least one character in any case
        int lineHeight = 18; ///< logical pixels, the same for every script; at least the font's height
        int maxLineCount = 3;
        Qt::LayoutDirection direction = Qt::LeftToRight; ///< of the window
    };

    /// Line breaks in `passage` are shown as blanks. Lines are aligned to the left, or to the right if the window or
    /// the passage is read from right to left. `emphasis`, in UTF-16 code units, gets `emphasisFormat`.
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
