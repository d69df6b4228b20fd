#include "kit/controls/Shortened.h"

#include <QString>

QString shortened(const QString &text, qsizetype longest)
{
    if (text.size() <= longest)
        return text;
    const bool partsPair = text[longest].isLowSurrogate() && text[longest - 1].isHighSurrogate();
    return text.left(partsPair ? longest - 1 : longest) + u'…';
}
