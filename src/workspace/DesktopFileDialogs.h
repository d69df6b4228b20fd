#pragma once

#include "platform/FileDialogs.h"

/// The desktop's own file panels where it has any that do, else Qt's.
class DesktopFileDialogs final : public FileDialogs {
public:
    [[nodiscard]] QStringList chooseToOpen(const OpenRequest &request) override;
    [[nodiscard]] std::optional<QString> chooseToSave(const SaveRequest &request) override;
};
