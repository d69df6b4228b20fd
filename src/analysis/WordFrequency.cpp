#include "analysis/WordFrequency.h"

#include <algorithm>

using namespace Qt::StringLiterals;

const QSet<QString> &WordFrequency::stopwords()
{
    static const QSet<QString> words = [] {
        const auto list =
            u"the and of to in a is it that you was for on are with as at be this have from or one had by but not what "
            "all were we when your can said there use an each which she do how their if will up other about out many "
            "then them these so some her would make like him into time has look two more write go see number no way "
            "could people my than first been call who its now find long down day did get come made may part i me our "
            "us am just being over both through during before after above below between under again further once "
            "here why while very too also well much really going got think know because those only own same such don "
            "should his they"_s.split(u' ');
        return QSet<QString>(list.begin(), list.end());
    }();
    return words;
}

TextRange WordFrequency::contextOf(const TextRange &token, qsizetype textLength)
{
    constexpr qint64 unitsBefore = 28;
    constexpr qint64 unitsBehind = 90;
    const qint64 start = std::max<qint64>(token.location - unitsBefore, 0);
    const qint64 end = std::min<qint64>(token.end() + unitsBehind, textLength);
    return {start, end - start};
}
