#include "workspace/reader/SelectableTitle.h"

#include "kit/controls/TextWrapping.h"

#include <QFocusEvent>
#include <QStyle>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr int maxLines = 6;
constexpr qsizetype maxUnits = 4'000; // more than fit into so many lines
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
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void SelectableTitle::setTitle(const QString &title)
{
    if (title == m_title)
        return;
    m_title = title;
    clear(); // or what was there would be laid out once more
    setWordWrapMode(TextWrapping::modeFor(title));
    // At the edge where the facts below begin, whichever way the title reads.
    QTextOption option = document()->defaultTextOption();
    option.setAlignment(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignAbsolute);
    document()->setDefaultTextOption(option);
    setPlainText(title);
    updateGeometry();
}

int SelectableTitle::heightForWidth(int width) const
{
    int lines = 0;
    double height = 0;
    for (QTextBlock block = document()->begin(); block.isValid() && lines < maxLines; block = block.next()) {
        QTextLayout layout(block.text().left(maxUnits), font());
        layout.setTextOption(document()->defaultTextOption());
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid() && lines < maxLines; line = layout.createLine()) {
            line.setLineWidth(width);
            height += line.height();
            ++lines;
        }
        layout.endLayout();
    }
    return std::max(int(std::ceil(height)), fontMetrics().height());
}

QSize SelectableTitle::sizeHint() const
{
    return {defaultWidth, heightForWidth(defaultWidth)};
}

QSize SelectableTitle::minimumSizeHint() const
{
    return {minWidth, fontMetrics().height()};
}

/// What is selected goes with the focus, or it would look as if it were about to be coded. A menu only borrows it.
void SelectableTitle::focusOutEvent(QFocusEvent *event)
{
    QTextEdit::focusOutEvent(event);
    const Qt::FocusReason reason = event->reason();
    const bool isLent =
        reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason || reason == Qt::ActiveWindowFocusReason;
    if (!isLent)
        moveCursor(QTextCursor::Start);
}
