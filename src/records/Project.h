#pragma once

#include "records/database/Record.h"

#include <QDateTime>
#include <QString>
#include <QUuid>

/// One research study. Every other stored record belongs to one, directly or through a document or a code.
struct Project : Record<Project> {
    QUuid id;
    QString name;
    QDateTime createdAt; ///< fixes the order of projects
    QDateTime modifiedAt; ///< the moment of creation until the first rename

    bool operator==(const Project &) const = default;

    static constexpr auto databaseTable = "project";
    [[nodiscard]] static constexpr auto databaseColumns()
    {
        return std::tuple{
            Field{"id", &Project::id},
            Field{"name", &Project::name},
            Field{"createdAt", &Project::createdAt},
            Field{"modifiedAt", &Project::modifiedAt},
        };
    }
};
