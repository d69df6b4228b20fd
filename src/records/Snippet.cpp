#include "records/Snippet.h"

#include "records/TextTrimming.h"

#include <algorithm>

Snippet Snippet::withoutLineFeeds(const QString &text, const TextRange &passage)
{
    const auto isBlank = [&](qint64 position) {
        return text[position] == u'\n' || TextTrimming::isBlank(text[position].unicode());
    };
    Snippet snippet(text, passage);
    TextRange &rest = snippet.m_passage;
    for (; rest.length > 0 && isBlank(rest.location); --rest.length)
        ++rest.location;
    while (rest.length > 0 && isBlank(rest.end() - 1))
        --rest.length;
    snippet.m_hasLineFeeds = false;
    return snippet;
}

QString Snippet::toString() const
{
    return beginning(m_passage.length);
}

QString Snippet::beginning(qsizetype length) const
{
    QString shown = m_text.mid(m_passage.location, std::min<qsizetype>(length, m_passage.length));
    if (!m_hasLineFeeds)
        shown.replace(u'\n', u' ');
    return shown;
}

bool Snippet::operator==(const Snippet &other) const
{
    const bool isSamePassage = m_text.constData() == other.m_text.constData() && m_passage == other.m_passage;
    return m_hasLineFeeds == other.m_hasLineFeeds && (isSamePassage || passage() == other.passage());
}
