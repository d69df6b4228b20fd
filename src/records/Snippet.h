#pragma once

#include "records/TextRange.h"

#include <QString>

#include <utility>

/// A passage as lists and reports show it. Shares its document's text and copies only what is asked for: a passage may
/// be a whole document and be listed many times.
class Snippet {
public:
    Snippet() = default;
    /// All of `text`, as it stands.
    explicit Snippet(QString text) : m_text(std::move(text)), m_passage{0, m_text.size()} { }
    /// As it stands. `passage` must lie in `text`.
    Snippet(QString text, const TextRange &passage) : m_text(std::move(text)), m_passage(passage) { }
    /// With spaces for line feeds, and no blanks at its ends. `passage` must lie in `text`.
    [[nodiscard]] static Snippet withoutLineFeeds(const QString &text, const TextRange &passage);

    [[nodiscard]] QString toString() const;
    /// Its first `length` units or, if it's shorter, the whole.
    [[nodiscard]] QString beginning(qsizetype length) const;
    /// O(1) where both share their text.
    bool operator==(const Snippet &other) const;

private:
    [[nodiscard]] QStringView passage() const
    {
        return QStringView(m_text).sliced(m_passage.location, m_passage.length);
    }

    QString m_text;
    TextRange m_passage;
    bool m_hasLineFeeds = true;
};
