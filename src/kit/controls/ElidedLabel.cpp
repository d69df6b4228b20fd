#include "kit/controls/ElidedLabel.h"

#include "kit/controls/LongText.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace {

/// UTF-16 code units kept of either end, more than the widest window shows: measuring a megabyte at each paint is slow.
constexpr qsizetype longestEnd = 2'000;

QString withoutMiddle(const QString &text)
{
    return text.size() <= 2 * longestEnd ? text : text.first(longestEnd) + text.last(longestEnd);
}

/// Rounded up: advances are fractional, and a text that lacks a fraction of a pixel would be elided.
int widthOf(const QString &text, const QFont &font)
{
    return int(std::ceil(QFontMetricsF(font).horizontalAdvance(text)));
}

} // namespace

ElidedLabel::ElidedLabel(const QString &text, const QFont &font, Symbols::Tint tint, QWidget *parent)
    : QLabel(parent),
      m_tint(tint)
{
    setTextFormat(Qt::PlainText);
    setFont(font);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setText(text);
}

void ElidedLabel::setText(const QString &text)
{
    QString line = text;
    line.replace(u'\n', u' ');
    m_shown = withoutMiddle(line);
    setAccessibleName(line);
    QLabel::setText(line);
}

void ElidedLabel::setElideMode(Qt::TextElideMode mode)
{
    m_elideMode = mode;
    update();
}

void ElidedLabel::reserveRoomFor(const QString &widest)
{
    m_widest = widest;
    updateGeometry();
}

bool ElidedLabel::isElided() const
{
    return widthOf(m_shown, font()) > width();
}

QSize ElidedLabel::sizeHint() const
{
    return {std::max(widthOf(m_shown, font()), widthOf(m_widest, font())), fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    const QSize wanted = sizeHint();
    return {std::min(wanted.width(), fontMetrics().horizontalAdvance(QChar(0x2026)) * 2), wanted.height()};
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(Symbols::colorOf(m_tint));
    const Qt::Alignment visual = QStyle::visualAlignment(layoutDirection(), alignment());
    painter.drawText(rect(), int(visual) | Qt::TextSingleLine | Qt::TextDontClip,
        isElided() ? fontMetrics().elidedText(m_shown, m_elideMode, width()) : m_shown);
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && isElided()) {
        LongText::showToolTip(static_cast<QHelpEvent *>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}
