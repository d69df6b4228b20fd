#pragma once

#include <QStringView>

/// Calls `visit` with each line of `text` in order, without its line feed; empty lines count, and there is always at
/// least one. A line feed after a carriage return ends no line: together they count as one character.
template <typename Visitor>
void forEachLine(QStringView text, Visitor visit)
{
    qsizetype start = 0;
    for (qsizetype feed = text.indexOf(u'\n'); feed >= 0; feed = text.indexOf(u'\n', feed + 1)) {
        if (feed > 0 && text[feed - 1] == u'\r')
            continue;
        visit(text.sliced(start, feed - start));
        start = feed + 1;
    }
    visit(text.sliced(start));
}
