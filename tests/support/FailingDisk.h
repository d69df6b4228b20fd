#pragma once

#include <QString>

#include <sys/resource.h>

#include <memory>

/// Ways in which a disk fails, each for as long as the object lives.

/// A file takes no more than a number of bytes, as on a disk that is nearly full.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

/// A file or folder isn't where it was.
class Vanished {
public:
    explicit Vanished(QString path);
    ~Vanished();
    Vanished(const Vanished &) = delete;
    Vanished &operator=(const Vanished &) = delete;

private:
    QString m_path;
};

/// Nothing can be made, replaced or removed in a folder, nor may anything in it be reached by path. Root, whom no
/// permission stops, is somebody else meanwhile.
class ClosedFolder {
public:
    explicit ClosedFolder(QString path);
    ~ClosedFolder();
    ClosedFolder(const ClosedFolder &) = delete;
    ClosedFolder &operator=(const ClosedFolder &) = delete;

private:
    QString m_path;
    bool m_wasRoot;
};

/// A folder on a small disk of its own. Only root may have one.
class SmallDisk {
public:
    /// `path` must be an empty folder.
    SmallDisk(QString path, int kibibytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    [[nodiscard]] bool isThere() const { return m_isThere; }
    /// Leaves so many bytes free.
    void fill(qint64 free);
    void empty();

private:
    QString m_path;
    bool m_isThere = false;
};

/// A small disk has only so many bytes left.
class FullDisk {
public:
    FullDisk(SmallDisk &disk, qint64 free) : m_disk(disk) { m_disk.fill(free); }
    ~FullDisk() { m_disk.empty(); }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    SmallDisk &m_disk;
};
