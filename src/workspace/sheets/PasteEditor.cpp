#include "workspace/sheets/PasteEditor.h"

#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "records/TextTrimming.h"

#include <QPlainTextDocumentLayout>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr int minHeight = 232;
constexpr int verticalPadding = 5;
constexpr int sidePadding = 6;
constexpr int documentMargin = 2;
constexpr int lineHeight = 19;

/// Makes each line at least `lineHeight` high, which Qt's layout for plain text can't.
class SpreadLayout final : public QPlainTextDocumentLayout {
public:
    using QPlainTextDocumentLayout::QPlainTextDocumentLayout;

    [[nodiscard]] QRectF blockBoundingRect(const QTextBlock &block) const override
    {
        QRectF rect = QPlainTextDocumentLayout::blockBoundingRect(block);
        if (!rect.isEmpty())
            rect.setHeight(spread(*block.layout()) + (block.next().isValid() ? 0 : document()->documentMargin()));
        return rect;
    }

private:
    /// Returns the height of the lines together.
    static double spread(const QTextLayout &layout)
    {
        double top = 0;
        for (int index = 0; index < layout.lineCount(); ++index) {
            QTextLine line = layout.lineAt(index);
            const double height = std::max(double(lineHeight), std::ceil(line.height()));
            line.setPosition({line.x(), top + std::floor((height - line.height()) / 2)});
            top += height;
        }
        return top;
    }
};

} // namespace

PasteEditor::PasteEditor(QWidget *parent) : QPlainTextEdit(parent)
{
    setFont(Fonts::body());
    document()->setDefaultFont(Fonts::body());
    document()->setDocumentLayout(new SpreadLayout(document()));
    document()->setDocumentMargin(documentMargin);
    setViewportMargins(sidePadding, verticalPadding, sidePadding, verticalPadding);
    viewport()->setAutoFillBackground(false); // the style fills the rounded frame
    setTabChangesFocus(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setMinimumHeight(minHeight);
}

QString PasteEditor::text() const
{
    QString text = document()->toRawText(); // toPlainText turns no-break spaces into spaces
    std::ranges::replace(text, QChar(QChar::ParagraphSeparator), u'\n');
    return text;
}

bool PasteEditor::isBlank() const
{
    const int end = document()->characterCount() - 1;
    int position = 0;
    const auto isBlankAt = [this](int at) {
        const char16_t unit = document()->characterAt(at).unicode();
        return TextTrimming::isBlank(unit) || TextTrimming::isLineBreak(unit);
    };
    while (position < end && isBlankAt(position))
        ++position;
    return position >= end;
}

FocusOutline PasteEditor::focusOutline() const
{
    return {rect(), Metrics::popoverRadius, FocusOutline::Mark::halo};
}
