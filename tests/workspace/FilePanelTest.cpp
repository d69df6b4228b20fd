#include "workspace/FilePanel.h"

#include "kit/controls/Alert.h"
#include "kit/theme/ThemedTest.h"
#include "platform/AtomicFile.h"
#include "workspace/DesktopFileDialogs.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QLineEdit>
#include <QListView>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

/// Over a folder with another one and two files in it.
class FilePanelTest : public ThemedTest {
protected:
    FilePanelTest()
    {
        QDir(folder.path()).mkpath(u"interviews"_s);
        AtomicFile::write(folder.filePath(u"notes.txt"_s), "text");
        AtomicFile::write(folder.filePath(u"report.txt"_s), "%PDF-1.4");
    }
    template <typename Request>
    void show(const Request &request)
    {
        panel = std::make_unique<FilePanel>(nullptr, request, folder.path());
        panel->show();
        QApplication::setActiveWindow(panel.get());
        EXPECT_TRUE(QTest::qWaitFor([this] { return list().model()->rowCount(list().rootIndex()) == 3; }));
    }
    void showImport()
    {
        show(FileDialogs::OpenRequest{
            .title = u"Import Documents"_s, .prompt = u"Import"_s, .allowsFolders = true, .allowsSeveral = true});
    }
    [[nodiscard]] QListView &list() const { return childOf<QListView>(panel.get(), u"listView"_s); }
    [[nodiscard]] QLineEdit &name() const { return childOf<QLineEdit>(panel.get(), u"fileNameEdit"_s); }
    [[nodiscard]] QPushButton &button() const
    {
        const auto *box = panel->findChild<QDialogButtonBox *>();
        return *box->button(
            panel->acceptMode() == QFileDialog::AcceptSave ? QDialogButtonBox::Save : QDialogButtonBox::Open);
    }
    [[nodiscard]] QModelIndex rowOf(const QString &file) const
    {
        const QAbstractItemModel &model = *list().model();
        return model.match(model.index(0, 0, list().rootIndex()), Qt::DisplayRole, file).value(0);
    }
    void click(const QString &file, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, modifiers, list().visualRect(rowOf(file)).center());
    }
    void enterInterviews() const
    {
        click(u"interviews"_s);
        QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, list().visualRect(rowOf(u"interviews"_s)).center());
        EXPECT_EQ(panel->directory().path(), folder.filePath(u"interviews"_s));
    }

    const QTemporaryDir folder;
    std::unique_ptr<FilePanel> panel;
};

} // namespace

TEST_F(FilePanelTest, TakesTheFilesAndFoldersThatAreSelected)
{
    for (const QStringList &names :
        {QStringList{u"interviews"_s}, {u"notes.txt"_s, u"report.txt"_s}, {u"interviews"_s, u"report.txt"_s}}) {
        showImport();
        QStringList paths;
        for (const QString &each : names) {
            click(each, Qt::ControlModifier);
            paths.append(folder.filePath(each));
        }
        EXPECT_EQ(button().text(), u"Import"_s);
        QTest::mouseClick(&button(), Qt::LeftButton);
        QStringList chosen = panel->chosen();
        chosen.sort(); // the panel sorts its rows when it comes to it
        EXPECT_EQ(chosen, paths);
    }
}

TEST_F(FilePanelTest, NeverTakesAFolderThatIsOnlyGoneThrough)
{
    showImport();
    enterInterviews();
    EXPECT_FALSE(button().isEnabled());
    QTest::mouseClick(&childOf<QToolButton>(panel.get(), u"backButton"_s), Qt::LeftButton);
    EXPECT_EQ(panel->directory().path(), folder.path());
    EXPECT_FALSE(button().isEnabled()); // though the folder was selected when it was entered
    name().setFocus();
    QTest::keyClicks(&name(), u"interviews"_s);
    EXPECT_EQ(button().text(), u"Import"_s);
    QTest::mouseClick(&button(), Qt::LeftButton);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(panel->directory().path(), folder.filePath(u"interviews"_s));
}

TEST_F(FilePanelTest, TellsTheKindOfAFileWithoutReadingIt)
{
    showImport();
    const auto kindOf = [this](const QString &file) { return rowOf(file).siblingAtColumn(2).data().toString(); };
    EXPECT_TRUE(QTest::qWaitFor([&] { return !kindOf(u"report.txt"_s).isEmpty(); }));
    EXPECT_EQ(kindOf(u"report.txt"_s), kindOf(u"notes.txt"_s));
    EXPECT_NE(kindOf(u"report.txt"_s), kindOf(u"interviews"_s));
}

TEST_F(FilePanelTest, AsksBeforeItReplacesAFile)
{
    for (const QString &answer : {u"Cancel"_s, u"Replace"_s}) {
        show(FileDialogs::SaveRequest{
            .title = u"Export"_s, .prompt = u"Export"_s, .proposedName = u"notes"_s, .extension = u"txt"_s});
        QTest::mouseClick(&button(), Qt::LeftButton);
        auto *alert = panel->findChild<Alert *>();
        ASSERT_NE(alert, nullptr);
        EXPECT_TRUE(panel->chosen().isEmpty());
        pressButton(*alert, answer);
        EXPECT_EQ(panel->isVisible(), answer == u"Cancel");
        EXPECT_EQ(panel->chosen(), answer == u"Cancel" ? QStringList() : QStringList{folder.filePath(u"notes.txt"_s)});
    }
    show(FileDialogs::SaveRequest{
        .title = u"Export"_s, .prompt = u"Export"_s, .proposedName = u"new"_s, .extension = u"txt"_s});
    QTest::mouseClick(&button(), Qt::LeftButton);
    EXPECT_EQ(panel->chosen(), QStringList{folder.filePath(u"new.txt"_s)});
}

TEST_F(FilePanelTest, OpensWhereTheLastOneWasClosed)
{
    DesktopFileDialogs dialogs;
    QStringList folders;
    const auto visit = [&] {
        QTimer::singleShot(0, [&] {
            auto *shown = qobject_cast<FilePanel *>(QApplication::activeModalWidget());
            folders.append(shown->directory().path());
            shown->setDirectory(folder.path());
            shown->reject();
        });
    };
    visit();
    EXPECT_TRUE(dialogs.chooseToOpen({.title = u"Import"_s, .prompt = u"Import"_s, .allowsFolders = true}).isEmpty());
    visit();
    EXPECT_FALSE(
        dialogs.chooseToSave({.title = u"Export"_s, .prompt = u"Export"_s, .proposedName = {}, .extension = {}}));
    EXPECT_NE(folders.value(0), QDir::currentPath());
    EXPECT_EQ(folders.value(1), folder.path());
}
