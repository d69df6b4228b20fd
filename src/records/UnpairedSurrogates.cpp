#include "records/UnpairedSurrogates.h"

QString replaceUnpairedSurrogates(const QString &text)
{
    if (text.isValidUtf16())
        return text;
    QString result = text;
    for (qsizetype index = 0; index < result.size(); ++index) {
        const QChar unit = result.at(index);
        const bool startsPair =
            unit.isHighSurrogate() && index + 1 < result.size() && result.at(index + 1).isLowSurrogate();
        if (startsPair)
            ++index;
        else if (unit.isSurrogate())
            result[index] = QChar::ReplacementCharacter;
    }
    return result;
}
