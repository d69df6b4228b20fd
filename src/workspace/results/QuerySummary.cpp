#include "workspace/results/QuerySummary.h"

#include "kit/lists/ListMetrics.h"
#include "kit/lists/SnippetLayout.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"

#include <QPainter>

namespace {

constexpr int lineHeight = 17;
constexpr int maxLineCount = 2;

} // namespace

QuerySummary::QuerySummary(QWidget *parent) : QWidget(parent)
{
    setFont(Fonts::callout());
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void QuerySummary::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    setAccessibleName(text);
    updateGeometry();
    update();
}

SnippetLayout QuerySummary::layOut(int width) const
{
    return {m_text,
        {.font = font(),
            .width = width,
            .lineHeight = lineHeight,
            .maxLineCount = maxLineCount,
            .direction = layoutDirection()}};
}

int QuerySummary::heightForWidth(int width) const
{
    return layOut(width).height();
}

QSize QuerySummary::sizeHint() const
{
    return {ListMetrics::defaultColumnWidth, heightForWidth(ListMetrics::defaultColumnWidth)};
}

QSize QuerySummary::minimumSizeHint() const
{
    return {0, SnippetLayout::lineHeightOf({.font = font(), .lineHeight = lineHeight})};
}

void QuerySummary::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(Theme::colors().text);
    layOut(width()).draw(painter, {});
}
