#include "kit/controls/Pill.h"

#include "kit/theme/Fonts.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int padding = 7;
constexpr int minHeight = 17;

} // namespace

Pill::Pill(const QString &text, QWidget *parent) : QWidget(parent)
{
    setFont(Fonts::pill());
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setText(text);
}

void Pill::setText(const QString &text)
{
    m_text = text;
    setAccessibleName(text);
    updateGeometry();
    update();
}

QSize Pill::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {metrics.horizontalAdvance(m_text) + 2 * padding, std::max(minHeight, metrics.height() + 4)};
}

void Pill::paintEvent(QPaintEvent *)
{
    const ThemeColors &colors = Theme::colors();
    QPainter painter(this);
    Painting::fill(painter, rect(), height() / 2., colors.pill);
    if (colors.look.hasHighContrast)
        Painting::edge(painter, rect(), height() / 2., colors.accentForeground);
    painter.setPen(colors.secondary);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, m_text);
}
