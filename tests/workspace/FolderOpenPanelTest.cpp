#include "workspace/FolderOpenPanel.h"

#include "platform/AtomicFile.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Shows a folder with another one and two files in it.
class FolderOpenPanelTest : public testing::Test {
protected:
    FolderOpenPanelTest()
    {
        QDir(folder.path()).mkpath(u"interviews"_s);
        for (const QString &name : {u"notes.txt"_s, u"report.txt"_s})
            AtomicFile::write(folder.filePath(name), "text");
        panel.setAcceptMode(QFileDialog::AcceptOpen);
        panel.setLabelText(QFileDialog::Accept, u"Import"_s);
        panel.setFileMode(QFileDialog::ExistingFiles);
        panel.setDirectory(folder.path());
        panel.show();
        EXPECT_TRUE(QTest::qWaitFor([this] { return list().model()->rowCount(list().rootIndex()) == 3; }));
    }
    [[nodiscard]] QListView &list() const { return *panel.findChild<QListView *>(u"listView"_s); }
    [[nodiscard]] QPushButton &button() const
    {
        return *panel.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Open);
    }
    [[nodiscard]] QPoint placeOf(const QString &name) const
    {
        for (int row = 0; row < 3; ++row) {
            const QModelIndex index = list().model()->index(row, 0, list().rootIndex());
            if (index.data().toString() == name)
                return list().visualRect(index).center();
        }
        return {};
    }
    void choose(const QStringList &names)
    {
        Qt::KeyboardModifiers modifiers;
        for (const QString &name : names) {
            QTest::mouseClick(list().viewport(), Qt::LeftButton, modifiers, placeOf(name));
            modifiers = Qt::ControlModifier;
        }
        EXPECT_EQ(button().text(), u"Import"_s);
        QTest::mouseClick(&button(), Qt::LeftButton);
    }
    [[nodiscard]] QStringList paths(const QStringList &names) const
    {
        QStringList result;
        for (const QString &name : names)
            result.append(folder.filePath(name));
        return result;
    }

    const QTemporaryDir folder;
    FolderOpenPanel panel{nullptr, u"Import Documents"_s, u"Import"_s};
};

} // namespace

TEST_F(FolderOpenPanelTest, TakesFilesAndFoldersAlikeAndEntersAFolderByADoubleClick)
{
    for (const QStringList &names :
        {QStringList{u"interviews"_s}, {u"notes.txt"_s, u"report.txt"_s}, {u"interviews"_s, u"report.txt"_s}}) {
        panel.show();
        choose(names);
        EXPECT_EQ(panel.result(), QDialog::Accepted) << names.first().toStdString();
        QStringList chosen = panel.chosen();
        chosen.sort();
        EXPECT_EQ(chosen, paths(names));
    }
    panel.show();
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, placeOf(u"interviews"_s));
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, placeOf(u"interviews"_s));
    EXPECT_EQ(panel.directory().path(), folder.filePath(u"interviews"_s));
    EXPECT_FALSE(button().isEnabled());
}

TEST_F(FolderOpenPanelTest, ATypedNameOfAFolderEntersIt)
{
    auto &name = *panel.findChild<QLineEdit *>(u"fileNameEdit"_s);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&panel));
    name.setFocus();
    QTest::keyClicks(&name, u"interviews"_s);
    QTest::keyClick(&name, Qt::Key_Return);
    EXPECT_TRUE(panel.isVisible());
    EXPECT_EQ(panel.directory().path(), folder.filePath(u"interviews"_s));
}
