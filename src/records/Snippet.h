#pragma once

#include "records/TextRange.h"

#include <QDateTime>
#include <QString>
#include <QUuid>

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

/// One coded passage as listed under a code. Not stored.
struct ExcerptHit {
    QUuid id; ///< the id of the coding it shows
    QUuid documentID;
    QString documentTitle;
    Snippet snippet; ///< the whole passage, line feeds as spaces
    qint64 start = 0; ///< UTF-16 code units
    qint64 length = 0; ///< UTF-16 code units
    QDateTime createdAt;

    [[nodiscard]] TextRange range() const noexcept { return {start, length}; }
    bool operator==(const ExcerptHit &) const = default;
};
