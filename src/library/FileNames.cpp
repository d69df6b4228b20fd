#include "library/FileNames.h"

#include "platform/UnpairedSurrogates.h"

namespace {

constexpr qsizetype maxLength = 80; // units; with its ending still a valid name in UTF-8 everywhere

bool isAwkward(QChar character)
{
    return character == u'/' || character == u'\\' || character == u':' || character.category() == QChar::Other_Control
        || character.category() == QChar::Other_Format || character == QChar::LineSeparator
        || character == QChar::ParagraphSeparator;
}

} // namespace

QString FileNames::cleaned(const QString &name)
{
    QString result = name.left(maxLength);
    if (!result.isEmpty() && result.back().isHighSurrogate())
        result.chop(1);
    for (QChar &character : result) {
        if (isAwkward(character))
            character = u'-';
    }
    while (result.startsWith(u'.'))
        result.remove(0, 1);
    return replaceUnpairedSurrogates(result);
}
