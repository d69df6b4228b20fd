#pragma once

#include <QString>

#include <sys/resource.h>

/// A disk that fails for as long as this lives.
class FailingDisk {
public:
    enum class Kind {
        full, ///< no file takes more than `room` bytes, in any folder
        closed, ///< nothing in the folder can be reached, made or removed; root is another user meanwhile
        gone, ///< the folder isn't where it was
    };

    FailingDisk(Kind kind, QString folder, qint64 room = 0);
    ~FailingDisk();
    FailingDisk(const FailingDisk &) = delete;
    FailingDisk &operator=(const FailingDisk &) = delete;

private:
    Kind m_kind;
    QString m_folder;
    bool m_wasRoot;
    rlimit m_limitBefore{};
    void (*m_handlerBefore)(int) = nullptr;
};

/// Whether a user without any rights can get to the folder: a private one above it stops him.
[[nodiscard]] bool isReachableForAll(const QString &folder);
