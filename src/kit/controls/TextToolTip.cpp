#include "kit/controls/TextToolTip.h"

#include "kit/controls/Shortened.h"

#include <QTextDocument>
#include <QToolTip>

void TextToolTip::show(const QPoint &place, const QString &text, QWidget *owner)
{
    constexpr qsizetype maxUnits = 1'000;
    QToolTip::showText(place, Qt::convertFromPlainText(shortened(text, maxUnits)), owner);
}
