#pragma once

#include "platform/FileDialogs.h"

class FilePanel;

/// Asks for files in panels that open at the user's documents, and then where the last one was when it closed.
class DesktopFileDialogs final : public FileDialogs {
public:
    [[nodiscard]] QStringList chooseToOpen(const OpenRequest &request) override;
    [[nodiscard]] std::optional<QString> chooseToSave(const SaveRequest &request) override;

private:
    /// What was chosen; empty when the user cancelled.
    template <typename Request>
    QStringList ask(const Request &request);

    QString m_lastFolder; ///< empty before the first panel
};
