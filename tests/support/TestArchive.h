#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

/// A zip archive made member by member, so that it can hold what no archiver would write.
class TestArchive {
public:
    static constexpr quint32 regularFile = 0100644;
    static constexpr quint32 symbolicLink = 0120777; ///< its bytes are the target's path

    /// `mode` is a Unix file mode, with the type of file.
    TestArchive &add(const QByteArray &name, const QByteArray &bytes, quint32 mode = regularFile);
    [[nodiscard]] QByteArray bytes() const;

private:
    QByteArray m_members;
    QByteArray m_directory;
    quint16 m_count = 0;
};

/// A folder for a test's files, and another that is the system's temporary folder meanwhile, to see what is left in it.
class OwnTemporaryFolder {
public:
    OwnTemporaryFolder();
    ~OwnTemporaryFolder();

    [[nodiscard]] QString path(const QString &name) const { return m_files.filePath(name); }
    /// Writes a file of the test, and the folders above it. Returns its path.
    QString write(const QString &name, QByteArrayView bytes) const;
    [[nodiscard]] bool hasLeftovers() const;

private:
    QTemporaryDir m_files;
    QTemporaryDir m_temporary;
    QByteArray m_before;
};
