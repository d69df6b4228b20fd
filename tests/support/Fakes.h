#pragma once

#include "platform/FileDialogs.h"

#include <QStringList>

#include <optional>

/// File dialogs that answer at once with what the test has prepared, and remember what they were asked.
struct FakeFileDialogs final : FileDialogs {
    QStringList pathsToOpen;
    std::optional<QString> pathToSave;
    std::optional<OpenRequest> openRequest;
    std::optional<SaveRequest> saveRequest;

    QStringList chooseToOpen(const OpenRequest &request) override
    {
        openRequest = request;
        return pathsToOpen;
    }
    std::optional<QString> chooseToSave(const SaveRequest &request) override
    {
        saveRequest = request;
        return pathToSave;
    }
};

struct FakeFileViewer final : FileViewer {
    QStringList revealed;

    void reveal(const QString &path) override { revealed.append(path); }
};
