#pragma once

#include "records/TextRange.h"
#include "records/database/Record.h"

#include <QDateTime>
#include <QUuid>

/// One coded passage: one code applied to one range of one document.
struct Coding : Record<Coding> {
    QUuid id;
    QUuid documentID;
    QUuid codeID;
    qint64 start = 0; ///< UTF-16 code units into `Document::text`
    qint64 length = 0; ///< UTF-16 code units
    QDateTime createdAt; ///< the order of codings in every listing

    [[nodiscard]] TextRange range() const noexcept { return {start, length}; }
    bool operator==(const Coding &) const = default;

    static constexpr auto databaseTable = "coding";
    [[nodiscard]] static constexpr auto databaseColumns()
    {
        return std::tuple{
            Field{"id", &Coding::id},
            Field{"documentID", &Coding::documentID},
            Field{"codeID", &Coding::codeID},
            Field{"start", &Coding::start},
            Field{"length", &Coding::length},
            Field{"createdAt", &Coding::createdAt},
        };
    }
};
