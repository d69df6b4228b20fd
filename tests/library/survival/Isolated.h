#pragma once

#include <QString>

#include <functional>

/// What became of something that was done in a process of its own.
struct Ending {
    QString result; ///< of what was done; empty when it ended badly
    std::string fault; ///< how it ended badly, as by a signal, without an answer in time or by an exception; else empty
};

/// Does `body` in a copy of this process, so that it may crash or hang and do no harm to the test.
[[nodiscard]] Ending inProcessOfItsOwn(const std::function<QString()> &body);
