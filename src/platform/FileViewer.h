#pragma once

class QString;

/// The desktop's file manager.
class FileViewer {
public:
    virtual ~FileViewer() = default;
    /// Shows the file in its folder. Failing to is no failure of what was done before.
    virtual void reveal(const QString &path) = 0;
};
