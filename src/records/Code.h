#pragma once

#include "records/database/Record.h"

#include <QDateTime>
#include <QString>
#include <QUuid>

#include <optional>

/// One node of a project's codebook. Two codes may bear the same name.
struct Code : Record<Code> {
    QUuid id;
    QUuid projectID;
    QString name;
    QString colorHex; ///< as stored; parsed only when drawn
    std::optional<QString> memo;
    std::optional<QUuid> parentID; ///< absent for a top-level code
    QDateTime createdAt; ///< orders siblings

    bool operator==(const Code &) const = default;

    static constexpr auto databaseTable = "code";
    [[nodiscard]] static constexpr auto databaseColumns()
    {
        return std::tuple{
            Field{"id", &Code::id},
            Field{"projectID", &Code::projectID},
            Field{"name", &Code::name},
            Field{"colorHex", &Code::colorHex},
            Field{"memo", &Code::memo},
            Field{"parentID", &Code::parentID},
            Field{"createdAt", &Code::createdAt},
        };
    }
};

/// One line of the flattened code tree.
struct FlatCode {
    Code code;
    qint64 depth = 0; ///< 0 for a line at the left edge

    [[nodiscard]] QUuid id() const noexcept { return code.id; }
    bool operator==(const FlatCode &) const = default;
};
