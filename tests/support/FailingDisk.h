#pragma once

#include <QString>

#include <functional>

/// A disk that fails for as long as this lives.
class FailingDisk {
public:
    enum class Kind {
        full, ///< no file grows beyond `room` bytes, in any folder
        closed, ///< nothing in the folder can be reached, made or removed; root is another user meanwhile
        locked, ///< another program has the folder's library to itself
    };

    FailingDisk(Kind kind, const QString &folder, qint64 room = 0);
    ~FailingDisk() { m_end(); }
    FailingDisk(const FailingDisk &) = delete;
    FailingDisk &operator=(const FailingDisk &) = delete;

private:
    std::function<void()> m_end;
};

/// Whether a user without any rights can get to the folder: a private one above it stops him.
[[nodiscard]] bool isReachableForAll(const QString &folder);
