#include "workspace/results/QuerySummary.h"

#include "kit/lists/SnippetLayout.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"

#include <QPainter>
#include <QResizeEvent>

namespace {

constexpr int lineHeight = 17;
constexpr int maxLineCount = 2;

} // namespace

QuerySummary::QuerySummary(QWidget *parent) : QWidget(parent)
{
    setFont(Fonts::callout());
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void QuerySummary::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    setAccessibleName(text);
    fitHeight();
    update();
}

SnippetLayout QuerySummary::layOut() const
{
    return {m_text,
        {.font = font(),
            .width = width(),
            .lineHeight = lineHeight,
            .maxLineCount = maxLineCount,
            .direction = layoutDirection()}};
}

/// Not left to heightForWidth(): the column's layout, asked for another width, cut the second line off.
void QuerySummary::fitHeight()
{
    setFixedHeight(layOut().height());
}

void QuerySummary::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (event->size().width() != event->oldSize().width())
        fitHeight();
}

void QuerySummary::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(Theme::colors().text);
    layOut().draw(painter, {});
}
