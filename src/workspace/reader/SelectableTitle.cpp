#include "workspace/reader/SelectableTitle.h"

#include "kit/controls/LongText.h"

#include <QFocusEvent>
#include <QStyle>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr int maxLines = 6;
constexpr qsizetype maxUnits = 4'000; // of a paragraph; more than fit into so many lines
constexpr int defaultWidth = 400;
constexpr int minWidth = 40;

} // namespace

SelectableTitle::SelectableTitle(const QFont &font, QWidget *parent) : QTextEdit(parent)
{
    setFont(font);
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setFocusPolicy(Qt::ClickFocus);
    setTabChangesFocus(true);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred); // a fixed height would end at the size hint
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void SelectableTitle::setTitle(const QString &title)
{
    if (title == m_title)
        return;
    m_title = title;
    clear(); // or the next two calls would lay out the old title again
    setWordWrapMode(LongText::wrapMode(title));
    // Aligned with the line of facts below, whichever way the title reads.
    QTextOption option = document()->defaultTextOption();
    option.setAlignment(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignAbsolute);
    document()->setDefaultTextOption(option);
    setPlainText(title);
    adjustScrollBar();
    updateGeometry();
}

int SelectableTitle::heightForWidth(int width) const
{
    return std::max(heightOf(maxLines, width), fontMetrics().height());
}

/// The height of the first `lineCount` lines at that width, added up as the editor's own layout does: each line rounded
/// up.
int SelectableTitle::heightOf(int lineCount, int width) const
{
    qreal height = 0;
    for (QTextBlock block = document()->begin(); block.isValid() && lineCount > 0; block = block.next()) {
        QTextLayout layout(block.text().left(maxUnits), document()->defaultFont(), viewport());
        layout.setTextOption(document()->defaultTextOption());
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid() && lineCount > 0; line = layout.createLine()) {
            line.setLineWidth(width);
            height += std::ceil(line.height());
            --lineCount;
        }
        layout.endLayout();
    }
    return int(height);
}

/// A scroll bar takes width, which may make the title higher, which seems to call for a scroll bar: so it is decided
/// here, from the whole width.
void SelectableTitle::adjustScrollBar()
{
    const bool fits = heightOf(maxLines + 1, width()) <= height();
    setVerticalScrollBarPolicy(fits ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
}

void SelectableTitle::resizeEvent(QResizeEvent *event)
{
    adjustScrollBar();
    QTextEdit::resizeEvent(event);
}

QSize SelectableTitle::sizeHint() const
{
    return {defaultWidth, heightForWidth(defaultWidth)};
}

QSize SelectableTitle::minimumSizeHint() const
{
    return {minWidth, fontMetrics().height()};
}

/// A selection left behind would look like a passage to be coded. Menus and other windows only borrow the focus.
void SelectableTitle::focusOutEvent(QFocusEvent *event)
{
    QTextEdit::focusOutEvent(event);
    const Qt::FocusReason reason = event->reason();
    const bool isBorrowed =
        reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason || reason == Qt::ActiveWindowFocusReason;
    if (!isBorrowed)
        moveCursor(QTextCursor::Start);
}
