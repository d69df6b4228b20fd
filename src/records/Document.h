#pragma once

#include "records/database/Record.h"

#include <QDateTime>
#include <QString>
#include <QUuid>

#include <optional>

/// One text source of a project. The whole content lives in `text`, which never changes once the record exists: every
/// stored passage counts its units.
struct Document : Record<Document> {
    QUuid id;
    QUuid projectID;
    QString title;
    QString text;
    QDateTime addedAt; ///< the document list runs newest first on this
    QString sourceKind; ///< short lower-case tag: "paste", "qdpx", or the kind of the imported file
    qint64 wordCount = 0; ///< `TextStats::wordCount` of `text`
    qint64 charCount = 0; ///< extended grapheme clusters of `text`; never to be used for ranges
    std::optional<QString> memo;

    bool operator==(const Document &other) const;
    /// O(1) for copies of one document, which share their buffer.
    [[nodiscard]] bool hasSameText(const Document &other) const
    {
        return (text.constData() == other.text.constData() && text.size() == other.text.size()) || text == other.text;
    }

    static constexpr auto databaseTable = "document";
    [[nodiscard]] static constexpr auto databaseColumns()
    {
        return std::tuple{
            Field{"id", &Document::id},
            Field{"projectID", &Document::projectID},
            Field{"title", &Document::title},
            Field{"text", &Document::text},
            Field{"addedAt", &Document::addedAt},
            Field{"sourceKind", &Document::sourceKind},
            Field{"wordCount", &Document::wordCount},
            Field{"charCount", &Document::charCount},
            Field{"memo", &Document::memo},
        };
    }
};

inline bool Document::operator==(const Document &other) const
{
    return id == other.id && projectID == other.projectID && title == other.title && addedAt == other.addedAt
        && sourceKind == other.sourceKind && wordCount == other.wordCount && charCount == other.charCount
        && memo == other.memo && hasSameText(other);
}
