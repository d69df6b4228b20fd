#pragma once

#include <QString>

#include <exception>

class QFileDevice;

/// A failure that a user can be told about: `description()` is a whole sentence in her words.
class LocalizedError : public std::exception {
public:
    [[nodiscard]] virtual QString description() const = 0;
    [[nodiscard]] const char *what() const noexcept override { return "LocalizedError"; }
};

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
