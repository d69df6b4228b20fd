#pragma once

#include "records/TextRange.h"

#include <QtGlobal>

#include <span>
#include <vector>

/// Tells of one token after the other whether it shares a unit with any of some passages.
class PassageCursor {
public:
    /// One passage: the whole text.
    explicit PassageCursor(qsizetype textLength);
    /// The passages may overlap, repeat, be empty and lie outside the text.
    PassageCursor(std::span<const TextRange> passages, qsizetype textLength);

    /// The tokens must come in the order of their starts: all calls together are one walk over the passages.
    [[nodiscard]] bool operator()(qsizetype start, qsizetype end);

private:
    struct Stretch {
        qint64 start;
        qint64 end;
    };
    std::vector<Stretch> m_covered; ///< apart from each other, ascending, within the text
    std::size_t m_next = 0;
};
