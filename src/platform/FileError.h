#pragma once

#include "platform/LocalizedError.h"

class QFileDevice;

/// A failure of the file system, with the platform's own message.
class FileError : public LocalizedError {
public:
    /// `path` is the file that was meant, `message` the platform's words.
    FileError(QString path, QString message);
    /// The failure that `file` reports.
    explicit FileError(const QFileDevice &file);

    [[nodiscard]] QString description() const override;

private:
    QString m_path;
    QString m_message;
};
