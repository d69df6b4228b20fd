#include "kit/lists/RowLine.h"

#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "platform/LocaleText.h"
#include "records/TextTrimming.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// More than the widest row can show.
constexpr qsizetype maxUnits = 600;

} // namespace

QString RowText::withoutBreaks(QString text)
{
    std::ranges::replace_if(
        text, [](QChar unit) { return unit == u'\t' || TextTrimming::isLineBreak(unit.unicode()); }, u' ');
    return text;
}

QString RowText::oneLine(const QString &text)
{
    return withoutBreaks(text.left(maxUnits));
}

QString RowText::fitting(const QString &text, const QFont &font, int width)
{
    return QFontMetrics(font).elidedText(oneLine(text), Qt::ElideRight, width);
}

QString RowText::forMenu(const QString &name, const QFont &font)
{
    constexpr int maxWidth = 320;
    return fitting(name, font, maxWidth).replace(u'&', u"&&"_s).replace(u'\t', u' ');
}

QString RowText::counted(qint64 count, const QString &noun)
{
    return LocaleText::number(count) + u' ' + noun + (count == 1 ? u""_s : u"s"_s);
}

QRect RowLine::placed(const QRect &part) const
{
    return QStyle::visualRect(m_direction, m_whole, part);
}

RowLine RowLine::line(int top, int height) const
{
    RowLine part = *this;
    part.m_rest.setTop(m_rest.top() + top);
    part.m_rest.setHeight(height);
    return part;
}

QRect RowLine::takeSquare(int side, int gap)
{
    const QRect square(m_rest.left(), m_rest.top() + (m_rest.height() - side + 1) / 2, side, side);
    skip(side + gap);
    return placed(square);
}

void RowLine::symbol(const QString &name, const QColor &color, int side, int gap, double stroke)
{
    const QRect square = takeSquare(side, gap);
    if (m_painter != nullptr)
        Symbols::paint(*m_painter, square, name, color, stroke);
}

void RowLine::dot(const QColor &color, int side, int gap)
{
    const QRect square = takeSquare(side, gap);
    if (m_painter != nullptr)
        Painting::dot(*m_painter, square, color);
}

void RowLine::count(qint64 count, const QFont &font, int gap, int minWidth)
{
    const QString text = LocaleText::number(count);
    const int width = std::max(minWidth, QFontMetrics(font).horizontalAdvance(text));
    QRect place = m_rest;
    place.setLeft(m_rest.right() + 1 - width);
    skipAtEnd(width + gap);
    if (m_painter == nullptr)
        return;
    m_painter->setFont(font);
    m_painter->setPen(Theme::colors().secondary);
    const Qt::Alignment alignment = QStyle::visualAlignment(m_direction, Qt::AlignRight | Qt::AlignVCenter);
    m_painter->drawText(placed(place), int(alignment) | Qt::TextSingleLine | Qt::TextDontClip, text);
}

void RowLine::bar(double width, int height, int gap, const QColor &color)
{
    const int top = m_rest.top() + (m_rest.height() - height) / 2;
    QRectF bar(m_rest.right() + 1 - width, top, width, height);
    m_rest.setRight(int(std::floor(bar.left())) - gap - 1);
    if (m_direction == Qt::RightToLeft)
        bar.moveLeft(m_whole.left() + m_whole.right() + 1 - bar.right());
    if (m_painter != nullptr)
        Painting::fill(*m_painter, bar, Metrics::barRadius, color);
}

bool RowLine::text(const QString &text, const QFont &font, const QColor &color) const
{
    const QString shown = RowText::fitting(text, font, m_rest.width());
    if (m_painter != nullptr) {
        m_painter->setFont(font);
        m_painter->setPen(color);
        m_painter->setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        const Qt::Alignment alignment = QStyle::visualAlignment(m_direction, Qt::AlignLeft | Qt::AlignVCenter);
        m_painter->drawText(placed(m_rest), int(alignment) | Qt::TextSingleLine | Qt::TextDontClip, shown);
    }
    return shown == text;
}
