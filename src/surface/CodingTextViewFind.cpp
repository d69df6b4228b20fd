#include "surface/CodingTextView.h"

#include <algorithm>

std::optional<size_t> CodingTextView::currentFindMatch() const
{
    const TextRange selected = selection();
    const auto found = std::ranges::lower_bound(m_marks.findMatches, selected.location, {}, &TextRange::location);
    if (found == m_marks.findMatches.end() || *found != selected)
        return {};
    return size_t(found - m_marks.findMatches.begin());
}

void CodingTextView::setFindMatches(std::vector<TextRange> matches)
{
    std::erase_if(matches, [this](TextRange match) { return match.length < 1 || cut(match) != match; });
    std::ranges::sort(matches, {}, &TextRange::location);
    const auto kept = std::unique(
        matches.begin(), matches.end(), [](TextRange match, TextRange next) { return match.overlaps(next); });
    matches.erase(kept, matches.end());
    m_marks.findMatches = std::move(matches);
    viewport()->update();
}

void CodingTextView::selectFindMatch(size_t index)
{
    if (index >= m_marks.findMatches.size())
        return;
    const TextRange match = m_marks.findMatches[index];
    scrollTo(match);
    select(match);
}
