#include "kit/lists/RowText.h"

#include "records/TextTrimming.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// More than the widest row can show.
constexpr qsizetype longestLine = 600;

} // namespace

QString RowText::oneLine(const QString &text)
{
    QString line = text.left(longestLine);
    std::ranges::replace_if(
        line, [](QChar unit) { return unit == u'\t' || TextTrimming::isLineBreak(unit.unicode()); }, u' ');
    return line;
}

QString RowText::fitting(const QString &text, const QFont &font, int width)
{
    return QFontMetrics(font).elidedText(oneLine(text), Qt::ElideRight, width);
}

QString RowText::forMenu(const QString &name, const QFont &font)
{
    constexpr int widest = 320;
    return fitting(name, font, widest).replace(u'&', u"&&"_s).replace(u'\t', u' ');
}

void RowText::paint(
    QPainter &painter, const QRect &rect, const QFont &font, const QString &text, Qt::LayoutDirection direction)
{
    painter.setFont(font);
    const Qt::Alignment alignment = QStyle::visualAlignment(direction, Qt::AlignLeft | Qt::AlignVCenter);
    painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    painter.drawText(rect, int(alignment) | Qt::TextSingleLine | Qt::TextDontClip, fitting(text, font, rect.width()));
}
