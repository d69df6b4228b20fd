#include "platform/UnpairedSurrogates.h"

QString replaceUnpairedSurrogates(QString text)
{
    if (text.isValidUtf16())
        return text;
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar unit = std::as_const(text)[index];
        if (unit.isHighSurrogate() && index + 1 < text.size() && std::as_const(text)[index + 1].isLowSurrogate())
            ++index;
        else if (unit.isSurrogate())
            text[index] = QChar::ReplacementCharacter;
    }
    return text;
}
