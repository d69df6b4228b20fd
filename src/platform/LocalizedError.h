#pragma once

#include <QString>

#include <exception>

/// A failure that a user can be told about: `description()` is a whole sentence in her words.
class LocalizedError : public std::exception {
public:
    [[nodiscard]] virtual QString description() const = 0;
    [[nodiscard]] const char *what() const noexcept override { return "LocalizedError"; }
};
