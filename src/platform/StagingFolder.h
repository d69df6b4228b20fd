#pragma once

#include <QString>

/// A private folder in the system's temporary folder, removed with this object. A later process removes the folders of
/// one that was killed.
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

    /// Removes the folders of this user whose names begin with `prefix` and whose processes are gone. Folders that are
    /// younger than a minute stay: they may be in the making. Failures are ignored.
    static void removeAbandoned(const QString &prefix);

private:
    QString m_path;
    int m_lock; ///< held as long as the process lives: says that the folder isn't abandoned
};
