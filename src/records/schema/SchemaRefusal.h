#pragma once

#include <QByteArrayView>
#include <QString>

class DatabaseError;

/// The sentence that tells a user why a file can't be the library. All of these throw DatabaseError.
namespace SchemaRefusal {

/// `reason` is the rest of the sentence, with its full stop.
[[noreturn]] void refuse(const QString &reason);
/// `reason` says what is wrong with the table, without a full stop.
[[noreturn]] void refuse(QByteArrayView table, const QString &reason);
/// What went wrong when the table was tried out.
[[noreturn]] void refuse(QByteArrayView table, const DatabaseError &trouble);

} // namespace SchemaRefusal
