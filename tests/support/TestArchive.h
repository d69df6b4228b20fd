#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

/// A zip archive made member by member, so that it can hold what no archiver would write.
class TestArchive {
public:
    static constexpr quint32 regularFile = 0100644;
    static constexpr quint32 symbolicLink = 0120777; ///< its bytes are where it points to
    static constexpr quint32 folder = 0040755;

    /// `name` is written as it is; `mode` is what Unix has in a file's mode.
    TestArchive &add(const QByteArray &name, const QByteArray &bytes, quint32 mode = regularFile);
    [[nodiscard]] QByteArray bytes() const;

private:
    QByteArray m_members;
    QByteArray m_directory;
    quint16 m_count = 0;
};

/// A temporary folder that is the system's one for its lifetime, to see what is left in it.
class OwnTemporaryFolder {
public:
    OwnTemporaryFolder();
    ~OwnTemporaryFolder();

    [[nodiscard]] QString path(const QString &name) const { return m_files.filePath(name); }
    [[nodiscard]] bool hasLeftovers() const;

private:
    QTemporaryDir m_files; ///< the test's own
    QTemporaryDir m_temporary;
    QByteArray m_before;
};
