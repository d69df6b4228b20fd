#include "workspace/lists/RowText.h"

#include "records/TextTrimming.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace {

/// More than the widest row can show.
constexpr qsizetype longestLine = 600;

} // namespace

QString RowText::fitting(const QString &text, const QFont &font, int width)
{
    QString line = text.left(longestLine);
    std::ranges::replace_if(
        line, [](QChar unit) { return TextTrimming::isLineBreak(unit.unicode()); }, u' ');
    return QFontMetrics(font).elidedText(line, Qt::ElideRight, width);
}

void RowText::paint(
    QPainter &painter, const QRect &rect, const QFont &font, const QString &text, Qt::LayoutDirection direction)
{
    painter.setFont(font);
    const Qt::Alignment alignment = QStyle::visualAlignment(direction, Qt::AlignLeft | Qt::AlignVCenter);
    painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    painter.drawText(rect, int(alignment) | Qt::TextSingleLine | Qt::TextDontClip, fitting(text, font, rect.width()));
}
