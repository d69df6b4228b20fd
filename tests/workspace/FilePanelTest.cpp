#include "workspace/FilePanel.h"

#include "kit/controls/Alert.h"
#include "kit/controls/ProgressCapsule.h"
#include "kit/theme/ThemedTest.h"
#include "library/LibraryServices.h"
#include "platform/AtomicFile.h"
#include "workspace/DesktopFileDialogs.h"
#include "workspace/ImportProgress.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QListView>
#include <QTemporaryDir>
#include <QTimer>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

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
    void showImport() { show(FileDialogs::OpenRequest{u"Import"_s, u"Import"_s, true, true}); }
    [[nodiscard]] QListView &list() const { return childOf<QListView>(panel.get(), u"listView"_s); }
    [[nodiscard]] QAbstractButton &button() const
    {
        return *childOf<QDialogButtonBox>(panel.get(), u"buttonBox"_s).buttons().first();
    }
    [[nodiscard]] QPoint placeOf(const QString &file) const
    {
        const QModelIndex first = list().model()->index(0, 0, list().rootIndex());
        return list().visualRect(list().model()->match(first, Qt::DisplayRole, file).value(0)).center();
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
            QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::ControlModifier, placeOf(each));
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
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, placeOf(u"interviews"_s));
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, placeOf(u"interviews"_s));
    EXPECT_EQ(panel->directory().path(), folder.filePath(u"interviews"_s));
    EXPECT_FALSE(button().isEnabled());
    QTest::mouseClick(&childOf<QWidget>(panel.get(), u"backButton"_s), Qt::LeftButton);
    EXPECT_EQ(panel->directory().path(), folder.path());
    EXPECT_FALSE(button().isEnabled()); // though the folder was selected when it was entered
    auto &name = childOf<QLineEdit>(panel.get(), u"fileNameEdit"_s);
    name.setFocus();
    QTest::keyClicks(&name, u"interviews"_s);
    EXPECT_EQ(button().text(), u"Import"_s);
    QTest::mouseClick(&button(), Qt::LeftButton);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(panel->directory().path(), folder.filePath(u"interviews"_s));
}

TEST_F(FilePanelTest, AsksBeforeItReplacesAFile)
{
    for (const QString &answer : {u"Cancel"_s, u"Replace"_s, u"none"_s}) {
        const QString name = answer == u"none" ? u"new"_s : u"notes"_s;
        show(FileDialogs::SaveRequest{u"Export"_s, u"Export"_s, name, u"txt"_s});
        QTest::mouseClick(&button(), Qt::LeftButton);
        if (auto *alert = panel->findChild<Alert *>()) {
            EXPECT_TRUE(panel->chosen().isEmpty());
            pressButton(*alert, answer);
        } else
            EXPECT_EQ(answer, u"none"_s);
        EXPECT_EQ(panel->isVisible(), answer == u"Cancel");
        const QStringList chosen{folder.filePath(name + u".txt"_s)};
        EXPECT_EQ(panel->chosen(), answer == u"Cancel" ? QStringList() : chosen);
    }
}

TEST_F(FilePanelTest, OpensWhereTheLastOneWasClosed)
{
    DesktopFileDialogs dialogs;
    QStringList folders;
    for (int time = 0; time < 2; ++time) {
        QTimer::singleShot(0, [&] {
            auto *shown = qobject_cast<FilePanel *>(QApplication::activeModalWidget());
            folders.append(shown->directory().path());
            shown->setDirectory(folder.path());
            shown->reject();
        });
        EXPECT_TRUE(dialogs.chooseToOpen({u"Import"_s, u"Import"_s, true}).isEmpty());
    }
    EXPECT_NE(folders.value(0), QDir::currentPath());
    EXPECT_EQ(folders.value(1), folder.path());
}

using ImportProgressTest = ThemedTest;

TEST_F(ImportProgressTest, TellsTheFileTakesNoInputButItsOwnAndStopsOnlyThatImportWhenAsked)
{
    auto *field = new QLineEdit(&m_window);
    showWindow();
    ImportProgress progress(m_window, 0ms);
    const auto capsule = [this] { return m_window.findChild<ProgressCapsule *>(); };
    const auto goesOn = [&](qint64 number) { return progress.mayImport({number, 3, u"notes.txt"_s}); };
    const std::function<void()> waysToStop[]{
        [&] { QTest::mouseClick(capsule()->findChild<QPushButton *>(), Qt::LeftButton); },
        [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space); }, // the button has the focus
        [this] { EXPECT_FALSE(m_window.close()); }}; // in the middle of a file: the import ends first
    field->setFocus();
    EXPECT_TRUE(goesOn(2));
    EXPECT_EQ(capsule()->accessibleName(), u"File 2 of 3 notes.txt"_s);
    QTest::keyClicks(field, u"typed"_s);
    QInputMethodEvent composed;
    composed.setCommitString(u"字"_s);
    QApplication::sendEvent(field, &composed);
    QTest::mouseClick(m_window.windowHandle(), Qt::LeftButton, {}, field->geometry().center());
    EXPECT_FALSE(field->hasFocus());
    progress.finish();
    EXPECT_TRUE(field->hasFocus());
    QTest::keyClicks(field, u"afterwards"_s);
    EXPECT_EQ(field->text(), u"afterwards"_s);
    for (const auto &stop : waysToStop) {
        EXPECT_TRUE(goesOn(1));
        stop();
        EXPECT_FALSE(goesOn(2));
        progress.finish();
        EXPECT_EQ(capsule(), nullptr);
    }
    EXPECT_TRUE(m_window.close());
    ImportProgress ofShortImport(m_window, 1h);
    EXPECT_TRUE(ofShortImport.mayImport({1, 3, u"notes.txt"_s}));
    EXPECT_EQ(capsule(), nullptr);
}
