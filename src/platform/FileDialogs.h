#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class QString;

/// The desktop's panels for choosing files. Each blocks until the user has answered.
class FileDialogs {
public:
    struct OpenRequest {
        QString title;
        QString prompt; ///< the label of the button that accepts
        bool allowsFolders = false;
        bool allowsSeveral = false;
        QString extension = {}; ///< the one kind of file to offer, without a dot; empty for all
    };
    struct SaveRequest {
        QString title;
        QString prompt;
        QString proposedName;
        QString extension; ///< without a dot; a name typed without one gets it
    };

    virtual ~FileDialogs() = default;
    /// The chosen paths in the panel's order; empty when the user cancelled.
    [[nodiscard]] virtual QStringList chooseToOpen(const OpenRequest &request) = 0;
    [[nodiscard]] virtual std::optional<QString> chooseToSave(const SaveRequest &request) = 0;
};

/// The desktop's file manager.
class FileViewer {
public:
    virtual ~FileViewer() = default;
    /// Shows the file in its folder. Failing to is no failure of what was done before.
    virtual void reveal(const QString &path) = 0;
};
