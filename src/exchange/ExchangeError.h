#pragma once

#include "platform/LocalizedError.h"

#include <utility>

/// A failure whose sentence is known where it is thrown.
class ExchangeError : public LocalizedError {
public:
    explicit ExchangeError(QString description) : m_description(std::move(description)) { }

    [[nodiscard]] QString description() const override { return m_description; }

private:
    QString m_description;
};
