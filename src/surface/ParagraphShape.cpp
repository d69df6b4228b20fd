#include "surface/ParagraphShape.h"

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

bool mayRunRightToLeft(QStringView text)
{
    constexpr char16_t firstRightToLeft = 0x0590;
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar unit = text[index];
        if (unit.unicode() < firstRightToLeft)
            continue;
        const bool isPair = unit.isHighSurrogate() && index + 1 < text.size() && text[index + 1].isLowSurrogate();
        if (runsRightToLeft(isPair ? QChar::surrogateToUcs4(unit, text[index + 1]) : char32_t(unit.unicode())))
            return true;
        index += isPair ? 1 : 0;
    }
    return false;
}

/// Runs in different fonts report the same rectangle, and neighbours touch but for a rounding error.
std::vector<Span> united(std::vector<Span> spans)
{
    constexpr qreal crack = 0.1;
    std::ranges::sort(spans, {}, &Span::left);
    std::vector<Span> result;
    for (const Span &span : spans) {
        if (!result.empty() && span.left < result.back().right + crack)
            result.back().right = std::max(result.back().right, span.right);
        else
            result.push_back(span);
    }
    return result;
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

/// The shaped runs know their place on a line of mixed directions; a stretch's two edges alone don't tell it.
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
    return united(std::move(found));
}
