#pragma once

#include "platform/FileViewer.h"
#include "platform/Panels.h"
#include "platform/Terminator.h"

#include <QStringList>

#include <optional>

/// Panels that answer at once with what the test has prepared, and remember what they were asked.
struct FakePanels final : Panels {
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

struct FakeTerminator final : Terminator {
    int terminations = 0;

    void terminate() override { ++terminations; }
};
