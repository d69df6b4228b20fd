#include "surface/BlockLayout.h"

#include "kit/controls/TextWrapping.h"
#include "surface/DisplayText.h"
#include "surface/ReaderMetrics.h"

#include <QTextBlock>
#include <QTextLayout>

#include <cmath>

namespace {

QTextOption optionFor(const QTextBlock &block)
{
    QTextOption option;
    option.setTextDirection(Qt::LayoutDirectionAuto);
    if (block.textDirection() == Qt::RightToLeft) // the direction alone doesn't align
        option.setAlignment(Qt::AlignRight);
    const bool mayBeEndless =
        block.length() > DisplayText::longestParagraph; // others needn't be copied to be looked at
    option.setWrapMode(TextWrapping::modeFor(mayBeEndless ? block.text() : QString()));
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
