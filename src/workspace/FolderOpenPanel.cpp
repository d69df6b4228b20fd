#include "workspace/FolderOpenPanel.h"

#include <QDialogButtonBox>
#include <QFileSystemModel>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

FolderOpenPanel::FolderOpenPanel(QWidget *parent, const QString &title, QString prompt)
    : QFileDialog(parent, title),
      m_prompt(std::move(prompt))
{
    setOption(QFileDialog::DontUseNativeDialog);
    m_fileName = findChild<QLineEdit *>(u"fileNameEdit"_s);
    if (const auto *list = findChild<QListView *>(u"listView"_s)) // whose selection is also that of the other view
        m_selection = list->selectionModel();
    if (m_selection)
        connect(m_selection, &QItemSelectionModel::selectionChanged, this, &FolderOpenPanel::renderButton);
}

void FolderOpenPanel::accept()
{
    const bool isTyping = m_fileName && m_fileName->hasFocus();
    if (!isTyping && hasSelectedFolder()) {
        m_chosen = selectedPaths();
        return done(Accepted);
    }
    QFileDialog::accept();
    if (result() == Accepted)
        m_chosen = selectedFiles();
}

QStringList FolderOpenPanel::selectedPaths() const
{
    QModelIndexList rows = m_selection ? m_selection->selectedRows() : QModelIndexList();
    std::sort(rows.begin(), rows.end());
    QStringList paths;
    for (const QModelIndex &row : std::as_const(rows))
        paths.append(row.data(QFileSystemModel::FilePathRole).toString());
    return paths;
}

bool FolderOpenPanel::hasSelectedFolder() const
{
    const auto *files = m_selection ? qobject_cast<const QFileSystemModel *>(m_selection->model()) : nullptr;
    return files && std::ranges::any_of(m_selection->selectedRows(), [files](const QModelIndex &row) {
        return files->isDir(row);
    });
}

void FolderOpenPanel::renderButton()
{
    const auto *buttons = findChild<QDialogButtonBox *>();
    auto *open = buttons ? buttons->button(QDialogButtonBox::Open) : nullptr; // made anew now and then
    if (!open || !hasSelectedFolder())
        return;
    open->setEnabled(true); // Qt's panel counts files alone, and would open a folder
    open->setText(m_prompt);
}
