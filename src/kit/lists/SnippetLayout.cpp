#include "kit/lists/SnippetLayout.h"

#include "kit/lists/RowLine.h"
#include "records/TextTrimming.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr QChar ellipsis(0x2026);

/// As many units as the lines could hold if every letter were narrow, without half a surrogate pair at the end.
QString beginning(const QString &passage, const SnippetLayout::Style &style)
{
    constexpr int minLetterWidth = 2; // logical pixels
    constexpr qsizetype minLength = 64;
    const qsizetype room = qsizetype(style.maxLineCount) * std::max(style.width, 0) / minLetterWidth;
    qsizetype length = std::max(minLength, room);
    if (length >= passage.size())
        return passage;
    if (passage.at(length - 1).isHighSurrogate())
        --length;
    return passage.left(length);
}

QString withoutBlanksAtEnd(QString text)
{
    while (!text.isEmpty() && TextTrimming::isBlank(text.back().unicode()))
        text.chop(1);
    return text;
}

} // namespace

SnippetLayout::SnippetLayout(
    const QString &passage, const Style &style, const TextRange &emphasis, QTextCharFormat emphasisFormat)
    : m_style(style),
      m_emphasis(emphasis),
      m_emphasisFormat(std::move(emphasisFormat)),
      m_lineHeight(lineHeightOf(style)),
      m_layout(RowText::withoutBreaks(beginning(passage, style)), style.font)
{
    QTextOption option;
    const bool beginsAtRight = style.direction == Qt::RightToLeft || m_layout.text().isRightToLeft();
    option.setAlignment((beginsAtRight ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_layout.setTextOption(option);
    layOut();
    const qsizetype shown = laidOutLength();
    if (shown < passage.size())
        cutTo(shown);
}

int SnippetLayout::lineHeightOf(const Style &style)
{
    return std::max(style.lineHeight, int(std::ceil(QFontMetricsF(style.font).height())));
}

qsizetype SnippetLayout::laidOutLength() const
{
    if (m_layout.lineCount() == 0)
        return 0;
    const QTextLine last = m_layout.lineAt(m_layout.lineCount() - 1);
    return last.textStart() + last.textLength();
}

void SnippetLayout::cutTo(qsizetype length)
{
    // If the "…" pushes the last word out of the last line, that word loses letters until both fit. A few are enough
    // for any text, except for a line of characters without width, so the loss is limited.
    constexpr int maxLoss = 32;
    m_isCut = true;
    QString kept = withoutBlanksAtEnd(m_layout.text().left(length));
    for (int lost = 0;; ++lost) {
        m_layout.setText(kept + ellipsis);
        layOut();
        if (laidOutLength() > kept.size() || kept.isEmpty() || lost == maxLoss)
            return;
        kept = withoutBlanksAtEnd(kept.left(m_layout.previousCursorPosition(int(kept.size()))));
    }
}

void SnippetLayout::layOut()
{
    if (m_emphasis.length > 0) {
        const auto length = qint64(m_layout.text().size()) - (m_isCut ? 1 : 0);
        const qint64 start = std::clamp<qint64>(m_emphasis.location, 0, length);
        const qint64 end = std::clamp<qint64>(m_emphasis.end(), start, length);
        m_layout.setFormats({{int(start), int(end - start), m_emphasisFormat}});
    }
    // All lines take the base line of the style's own font, or letters of other fonts would make them uneven.
    const QFontMetricsF metrics(m_style.font);
    const double baseLine = std::floor((m_lineHeight - metrics.height()) / 2) + metrics.ascent();
    m_layout.beginLayout();
    for (int number = 0; number < m_style.maxLineCount; ++number) {
        QTextLine line = m_layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(m_style.width);
        line.setPosition({0, number * m_lineHeight + baseLine - line.ascent()});
    }
    m_layout.endLayout();
}

void SnippetLayout::draw(QPainter &painter, const QPointF &topLeft) const
{
    m_layout.draw(&painter, topLeft);
}
