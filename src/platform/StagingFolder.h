#pragma once

#include <QString>

/// A private folder in the system's temporary folder, gone with this object on every path.
class StagingFolder {
public:
    /// The folder's name is `prefix` and a fresh identifier in upper case. Throws FileError.
    explicit StagingFolder(const QString &prefix);
    ~StagingFolder();
    StagingFolder(const StagingFolder &) = delete;
    StagingFolder &operator=(const StagingFolder &) = delete;

    [[nodiscard]] const QString &path() const noexcept { return m_path; }
    [[nodiscard]] QString path(const QString &relative) const { return m_path + u'/' + relative; }
    /// Makes a sub-folder. Throws FileError.
    void makeFolder(const QString &relative) const;

private:
    QString m_path;
};
