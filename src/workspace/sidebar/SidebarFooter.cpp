#include "workspace/sidebar/SidebarFooter.h"

#include "kit/theme/Fonts.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"
#include "platform/ThisComputer.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int padding = 10; ///< above and below
constexpr int sidePadding = 8;
constexpr int lockSide = 9;
constexpr int spacing = 6;

} // namespace

SidebarFooter::SidebarFooter(QWidget *parent) : QWidget(parent)
{
    setFont(Fonts::caption());
    setAccessibleName(u"Offline · stored on "_s + thisComputer());
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize SidebarFooter::sizeHint() const
{
    const QFontMetrics metrics(font());
    const int text = metrics.horizontalAdvance(accessibleName());
    return {text + lockSide + spacing + 2 * sidePadding, metrics.height() + 2 * padding};
}

void SidebarFooter::paintEvent(QPaintEvent *)
{
    const QFontMetrics metrics(font());
    const int room = std::max(0, width() - 2 * sidePadding - lockSide - spacing);
    const QString text = metrics.elidedText(accessibleName(), Qt::ElideRight, room);
    QRect line(0, 0, lockSide + spacing + metrics.horizontalAdvance(text), height());
    line.moveLeft((width() - line.width()) / 2);
    const QRect lock(line.left(), (height() - lockSide) / 2, lockSide, lockSide);
    const auto placed = [&](const QRect &rect) { return QStyle::visualRect(layoutDirection(), line, rect); };

    QPainter painter(this);
    const QColor color = Theme::colors().tertiary;
    Symbols::paint(painter, placed(lock), u"lock.fill"_s, color);
    painter.setPen(color);
    painter.drawText(placed(line.adjusted(lockSide + spacing, 0, 0, 0)), Qt::AlignVCenter | Qt::TextDontClip, text);
}
