#pragma once

#include <QUuid>

#include <variant>

/// What the sidebar has selected, and with it what the middle column shows.
struct ProjectSelection {
    QUuid projectID;
    bool operator==(const ProjectSelection &) const = default;
};
struct CodeSelection {
    QUuid codeID;
    bool operator==(const CodeSelection &) const = default;
};
struct QuerySelection {
    bool operator==(const QuerySelection &) const = default;
};
struct WordFreqSelection {
    bool operator==(const WordFreqSelection &) const = default;
};

using SidebarSelection = std::variant<ProjectSelection, CodeSelection, QuerySelection, WordFreqSelection>;
