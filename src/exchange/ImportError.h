#pragma once

#include "platform/LocalizedError.h"

/// Why a file gave no text. The bytes themselves could be read; if not, the failure is a FileError.
class ImportError : public LocalizedError {
public:
    enum class Kind {
        unreadable, ///< not what its extension says, damaged, or locked
        noTextLayer, ///< pages without any text
        empty,
    };

    /// `fileName` is the last component of the path, with its extension; `Kind::empty` doesn't mention it.
    explicit ImportError(Kind kind, QString fileName = {});

    [[nodiscard]] Kind kind() const noexcept { return m_kind; }
    [[nodiscard]] QString description() const override;

private:
    Kind m_kind;
    QString m_fileName;
};
