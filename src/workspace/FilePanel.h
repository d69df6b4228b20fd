#pragma once

#include "platform/FileDialogs.h"

#include <QFileDialog>

class QItemSelectionModel;
class QLineEdit;

/// Asks for files. The desktop's own panel where it has one and no folders may be chosen, which few desktops offer
/// beside files; else Qt's. What is told here of folders, the button and replacing is true of Qt's panel; the desktop's
/// goes its own ways.
class FilePanel final : public QFileDialog {
    Q_OBJECT

public:
    /// Opens at `folder`.
    FilePanel(QWidget *parent, const FileDialogs::OpenRequest &request, const QString &folder);
    FilePanel(QWidget *parent, const FileDialogs::SaveRequest &request, const QString &folder);

    /// Absolute paths of the files and folders that were chosen, in the order of the list. Empty before.
    [[nodiscard]] QStringList chosen() const { return m_chosen; }

    /// Takes the selected rows, folders too, but enters a folder whose name was typed. Asks before a file is replaced.
    void accept() override;

private:
    FilePanel(QWidget *parent, const QString &title, const QString &folder, const QString &prompt,
        const QString &extension, bool mayBeNative);

    void refine();
    [[nodiscard]] bool hasSelectedFolder() const;
    void askToReplace(const QString &path);
    void renderButton();

    const QString m_prompt;
    QStringList m_chosen;
    // Parts of Qt's panel, null in the desktop's.
    QItemSelectionModel *m_selection = nullptr;
    QLineEdit *m_fileName = nullptr;
    bool m_isTyped = false; ///< the name was typed after the last row was selected
};
