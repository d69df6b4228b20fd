#include "surface/ParagraphShape.h"

#include "records/TextRange.h"

#include <QGlyphRun>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>
#include <utility>

namespace {

using Span = ParagraphShape::Span;

bool runsRightToLeft(char32_t character)
{
    switch (QChar::direction(character)) {
    case QChar::DirR:
    case QChar::DirAL:
    case QChar::DirAN:
    case QChar::DirRLE:
    case QChar::DirRLO:
    case QChar::DirRLI:
        return true;
    default:
        return false;
    }
}

bool mayRunRightToLeft(const QString &text)
{
    constexpr char16_t firstRightToLeft = 0x0590; // below it there is nothing to look up
    return std::ranges::any_of(text, [](QChar unit) { return unit.unicode() >= firstRightToLeft; })
        && std::ranges::any_of(text.toUcs4(), runsRightToLeft);
}

} // namespace

ParagraphShape::ParagraphShape(const QTextBlock &block) : m_text(block.text()), m_isMixed(mayRunRightToLeft(m_text))
{
}

int ParagraphShape::visibleEnd(const QTextLine &line) const
{
    int end = line.textStart() + line.textLength();
    if (end >= m_text.size())
        return end;
    while (end > line.textStart() && m_text[end - 1].isSpace())
        --end;
    return end;
}

std::vector<Span> ParagraphShape::spans(const QTextLine &line, int start, int end) const
{
    start = std::max(start, line.textStart());
    end = std::min(end, visibleEnd(line));
    if (start >= end)
        return {};
    if (m_isMixed)
        return mixedSpans(line, start, end);
    return {{line.cursorToX(start), line.cursorToX(end)}};
}

/// On a line of mixed directions the x of a stretch's two edges doesn't tell what lies between; its glyph runs do.
std::vector<Span> ParagraphShape::mixedSpans(const QTextLine &line, int start, int end) const
{
    std::vector<Span> found;
    for (const QGlyphRun &run : line.glyphRuns(start, end - start)) {
        const QRectF rectangle = run.boundingRect();
        found.push_back({rectangle.left(), rectangle.right()});
    }
    for (int position = start; position < end; ++position) {
        if (m_text[position] != u'\t') // tabulators have no glyphs
            continue;
        const auto [left, right] = std::minmax({line.cursorToX(position), line.cursorToX(position + 1)});
        found.push_back({left, right});
    }
    constexpr qreal maxGap = 0.1; // neighbouring runs touch but for a rounding error
    return united<&Span::left, &Span::right>(std::move(found), maxGap);
}
