#pragma once

#include <QFileDialog>

class QItemSelectionModel;
class QLineEdit;

/// Qt's own file panel, in which folders can be chosen beside files. Those of the desktops offer one or the other, and
/// Qt's by itself only enters a folder, as this one still does by a double click or a typed name.
class FolderOpenPanel final : public QFileDialog {
    Q_OBJECT

public:
    /// `prompt` is what the button says that takes what is selected.
    FolderOpenPanel(QWidget *parent, const QString &title, QString prompt);

    /// Absolute paths of the files and folders that were chosen, in the order of the list. Empty before.
    [[nodiscard]] QStringList chosen() const { return m_chosen; }

    void accept() override;

private:
    [[nodiscard]] QStringList selectedPaths() const;
    [[nodiscard]] bool hasSelectedFolder() const;
    void renderButton();

    // Parts of Qt's panel that it keeps; without them it behaves as Qt's does.
    QItemSelectionModel *m_selection = nullptr;
    QLineEdit *m_fileName = nullptr;
    QString m_prompt;
    QStringList m_chosen;
};
