#include "workspace/reader/BlockLayout.h"

#include "workspace/reader/DisplayText.h"
#include "workspace/reader/ReaderMetrics.h"

#include <QTextBlock>
#include <QTextLayout>

#include <cmath>

namespace {

/// Whether the text has a run without spaces that is too long to search for its end at every line. Ideographs may be
/// parted anywhere and don't count.
bool hasEndlessWord(QStringView text)
{
    constexpr char16_t firstIdeographic = 0x2E80;
    qsizetype length = 0;
    for (const QChar unit : text) {
        const bool mayBePartedAt = unit.isSpace() || unit.unicode() >= firstIdeographic;
        length = mayBePartedAt ? 0 : length + 1;
        if (length > DisplayText::longestParagraph)
            return true;
    }
    return false;
}

QTextOption optionFor(const QTextBlock &block)
{
    QTextOption option;
    option.setTextDirection(Qt::LayoutDirectionAuto);
    if (block.textDirection() == Qt::RightToLeft) // the direction alone doesn't align
        option.setAlignment(Qt::AlignRight);
    // Searching each line for a word's end takes a minute where a word fills a megabyte.
    const bool wrapsAnywhere = block.length() > DisplayText::longestParagraph && hasEndlessWord(block.text());
    option.setWrapMode(wrapsAnywhere ? QTextOption::WrapAnywhere : QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
}

/// A line's height is rounded up before the distance is added, as in a document with such a block format.
qreal linePitch(const QTextLine &line)
{
    return std::ceil(line.ascent() + line.descent() + line.leading()) + ReaderMetrics::lineDistance;
}

} // namespace

qreal BlockLayout::layOut(const QTextBlock &block, qreal width)
{
    QTextLayout &layout = *block.layout();
    layout.setTextOption(optionFor(block));
    layout.setCacheEnabled(true);
    layout.beginLayout();
    qreal y = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, y});
        y += linePitch(line);
    }
    layout.endLayout();
    return y;
}

void BlockLayout::release(const QTextBlock &block)
{
    QTextLayout &layout = *block.layout();
    layout.setCacheEnabled(false); // only an end of layout without cache frees the glyphs
    layout.beginLayout();
    layout.endLayout();
    layout.clearLayout();
}
