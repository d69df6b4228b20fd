#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <variant>

struct NullValue {
    bool operator==(const NullValue &) const = default;
};
struct TextValue {
    QByteArray utf8;
    bool operator==(const TextValue &) const = default;
};
struct BlobValue {
    QByteArray bytes;
    bool operator==(const BlobValue &) const = default;
};

/// A value in one of SQLite's storage classes, owned.
using DatabaseValue = std::variant<NullValue, qint64, double, TextValue, BlobValue>;

/// The positional arguments of a statement.
using Arguments = QList<DatabaseValue>;

/// A value in the current row of a statement. Text and bytes belong to the statement and live until its next step.
struct ValueView {
    enum class Kind { null, integer, real, text, blob };

    Kind kind = Kind::null;
    qint64 integer = 0;
    double real = 0;
    QByteArrayView bytes; ///< UTF-8 for text

    [[nodiscard]] bool isNull() const noexcept { return kind == Kind::null; }
};

/// A view of `value`, which must outlive it.
[[nodiscard]] ValueView viewOf(const DatabaseValue &value);
[[nodiscard]] DatabaseValue ownedValue(const ValueView &view);
