#include "workspace/FilePanel.h"

#include "kit/controls/AccessibleDialogs.h"
#include "kit/controls/Alert.h"

#include <QDialogButtonBox>
#include <QFileIconProvider>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QListView>
#include <QMimeDatabase>
#include <QPushButton>
#include <QScreen>
#include <QToolButton>
#include <QTreeView>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize panelSize{820, 500};

/// Chooses icons by file name. Qt's provider reads the start of each file, which blocks on some device files.
class IconsByName final : public QFileIconProvider {
public:
    [[nodiscard]] QIcon icon(IconType type) const override { return QFileIconProvider::icon(type); }
    [[nodiscard]] QIcon icon(const QFileInfo &info) const override
    {
        return QIcon::fromTheme(typeOf(info).iconName(), icon(info.isDir() ? Folder : File));
    }
    [[nodiscard]] QString type(const QFileInfo &info) const override { return typeOf(info).comment(); }

private:
    static QMimeType typeOf(const QFileInfo &info)
    {
        return QMimeDatabase().mimeTypeForFile(info, QMimeDatabase::MatchExtension);
    }
};

QStringList pathsOf(const QItemSelectionModel &selection)
{
    QModelIndexList rows = selection.selectedRows();
    std::sort(rows.begin(), rows.end()); // an index has no <=, which std::ranges asks for
    QStringList paths;
    for (const QModelIndex &row : rows)
        paths.append(row.data(QFileSystemModel::FilePathRole).toString());
    return paths;
}

} // namespace

FilePanel::FilePanel(QWidget *parent, const QString &title, const QString &folder, const QString &prompt,
    const QString &extension, bool mayBeNative)
    : QFileDialog(parent, title, folder),
      m_prompt(prompt)
{
    describeDialogsToScreenReaders();
    setOption(DontUseNativeDialog, !mayBeNative);
    setLabelText(Accept, prompt);
    if (!extension.isEmpty())
        setNameFilter(u"*."_s + extension);
    if (const auto *list = findChild<QListView *>(u"listView"_s)) {
        m_selection = list->selectionModel(); // which the other view shares
        m_fileName = findChild<QLineEdit *>(u"fileNameEdit"_s);
        refine();
    }
}

FilePanel::FilePanel(QWidget *parent, const FileDialogs::OpenRequest &request, const QString &folder)
    : FilePanel(parent, request.title, folder, request.prompt, request.extension, !request.allowsFolders)
{
    setAcceptMode(AcceptOpen);
    setOption(ReadOnly); // its keys would rename and delete files
    setFileMode(request.allowsSeveral ? ExistingFiles : ExistingFile);
}

FilePanel::FilePanel(QWidget *parent, const FileDialogs::SaveRequest &request, const QString &folder)
    : FilePanel(parent, request.title, folder, request.prompt, request.extension, true)
{
    setAcceptMode(AcceptSave);
    setFileMode(AnyFile);
    setDefaultSuffix(request.extension);
    selectFile(request.proposedName);
}

void FilePanel::refine()
{
    static IconsByName icons; // the panel keeps a pointer to them until it is deleted
    setIconProvider(&icons);
    setOption(DontConfirmOverwrite); // `accept` does
    resize(panelSize.boundedTo(screen()->availableSize()));
    QHeaderView &columns = *findChild<QTreeView *>(u"treeView"_s)->header();
    columns.setStretchLastSection(false);
    columns.setSectionResizeMode(QHeaderView::ResizeToContents);
    columns.setSectionResizeMode(0, QHeaderView::Stretch);

    connect(m_fileName, &QLineEdit::textEdited, this, [this] { m_isTyped = true; });
    connect(m_selection, &QItemSelectionModel::selectionChanged, this, [this] {
        m_isTyped = m_isTyped && m_fileName->hasFocus(); // Qt selects the row of a name while it is typed
        renderButton();
    });
    connect(m_fileName, &QLineEdit::textChanged, this, &FilePanel::renderButton);
    connect(this, &QFileDialog::directoryEntered, this, &FilePanel::renderButton);
    // Going back selects the folder that was left, which nobody has chosen.
    for (const QString &name : {u"backButton"_s, u"forwardButton"_s})
        connect(
            findChild<QToolButton *>(name), &QToolButton::clicked, m_selection, &QItemSelectionModel::clearSelection);
}

bool FilePanel::hasSelectedFolder() const
{
    const auto &files = static_cast<const QFileSystemModel &>(*m_selection->model());
    return std::ranges::any_of(
        m_selection->selectedRows(), [&files](const QModelIndex &row) { return files.isDir(row); });
}

void FilePanel::accept()
{
    if (m_selection != nullptr && acceptMode() == AcceptOpen && !m_isTyped && hasSelectedFolder()) {
        m_chosen = pathsOf(*m_selection);
        return done(Accepted);
    }
    const QFileInfo file(selectedFiles().value(0));
    if (m_selection != nullptr && acceptMode() == AcceptSave && file.exists() && !file.isDir())
        return askToReplace(file.absoluteFilePath());
    QFileDialog::accept();
    if (result() == Accepted)
        m_chosen = selectedFiles();
}

void FilePanel::askToReplace(const QString &path)
{
    Alert::show(*this,
        {.title = u"“%1” already exists. Do you want to replace it?"_s.arg(QFileInfo(path).fileName()),
            .message = u"Replacing it overwrites its contents."_s,
            .action = u"Replace"_s,
            .actionRole = ButtonRole::destructive,
            .cancel = u"Cancel"_s,
            .onAction = [this, path](const QString &) {
                m_chosen = {path};
                done(Accepted);
            }});
}

/// Qt's panel counts files alone, and calls its button otherwise where it would enter a folder. Its button is made anew
/// now and then.
void FilePanel::renderButton()
{
    QPushButton *open = findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Open);
    if (open == nullptr)
        return;
    if (hasSelectedFolder())
        open->setEnabled(true);
    else if (m_fileName->text().isEmpty() && !m_selection->hasSelection())
        open->setEnabled(false);
    open->setText(m_prompt);
}
