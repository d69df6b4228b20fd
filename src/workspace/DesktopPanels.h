#pragma once

#include "platform/Panels.h"

/// The desktop's own file panels where it has any that do, else Qt's.
class DesktopPanels final : public Panels {
public:
    [[nodiscard]] QStringList chooseToOpen(const OpenRequest &request) override;
    [[nodiscard]] std::optional<QString> chooseToSave(const SaveRequest &request) override;
};
