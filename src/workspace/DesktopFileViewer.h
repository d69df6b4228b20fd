#pragma once

#include "platform/FileViewer.h"

/// The desktop's file manager, asked over D-Bus; where none answers, the folder is opened.
class DesktopFileViewer final : public FileViewer {
public:
    void reveal(const QString &path) override;
};
