#pragma once

#include <string>

/// A row of a table, named after the fault that it would catch: what is given and what is to come of it.
template <typename Given, typename Expected = Given>
struct Case {
    const char *name;
    Given given;
    Expected expected;
};

/// The names of the rows of a table.
inline constexpr auto rowName = [](const auto &row) { return std::string(row.param.name); };
