#include "workspace/controls/TextToolTip.h"

#include "workspace/controls/Shortened.h"

#include <QTextDocument>
#include <QToolTip>

void TextToolTip::show(const QPoint &place, const QString &text, QWidget *owner)
{
    constexpr qsizetype mostUnits = 1'000;
    QToolTip::showText(place, Qt::convertFromPlainText(shortened(text, mostUnits)), owner);
}
