#include "kit/controls/Paragraph.h"

#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

Paragraph::Paragraph(const QString &text, const QFont &font, Symbols::Tint tint, int lineHeight, QWidget *parent)
    : QLabel(parent),
      m_tint(tint),
      m_lineHeight(lineHeight)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setFont(font);
    setText(text);
}

void Paragraph::setText(const QString &text)
{
    m_lines = text;
    m_lines.replace(u'\n', QChar::LineSeparator);
    setAccessibleName(text);
    QLabel::setText(text);
}

double Paragraph::layOut(QTextLayout &layout, double width) const
{
    QTextOption option(QStyle::visualAlignment(layoutDirection(), alignment()));
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(layoutDirection());
    layout.setTextOption(option);
    double top = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        const double height = std::max(double(m_lineHeight), line.height());
        line.setPosition({0, top + std::floor((height - line.height()) / 2)});
        top += height;
    }
    layout.endLayout();
    return top;
}

int Paragraph::heightForWidth(int width) const
{
    const QMargins margins = contentsMargins();
    QTextLayout layout(m_lines, font(), this);
    const double height = layOut(layout, width - margins.left() - margins.right());
    return int(std::ceil(height)) + margins.top() + margins.bottom();
}

QSize Paragraph::sizeHint() const
{
    QTextLayout layout(m_lines, font(), this);
    const double height = layOut(layout, QWIDGETSIZE_MAX);
    double width = 0;
    for (int index = 0; index < layout.lineCount(); ++index)
        width = std::max(width, layout.lineAt(index).naturalTextWidth());
    return QSize(int(std::ceil(width)), int(std::ceil(height))).grownBy(contentsMargins());
}

QSize Paragraph::minimumSizeHint() const
{
    constexpr int narrowest = 40;
    return {std::min(narrowest, sizeHint().width()), m_lineHeight};
}

void Paragraph::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QTextLayout layout(m_lines, font(), this);
    layOut(layout, contentsRect().width());
    painter.setPen(Symbols::colorOf(m_tint));
    layout.draw(&painter, contentsRect().topLeft());
}
