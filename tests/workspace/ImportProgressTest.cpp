#include "workspace/ImportProgress.h"

#include "kit/controls/ProgressCapsule.h"
#include "kit/theme/ThemedTest.h"
#include "library/LibraryServices.h"

#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

class ImportProgressTest : public ThemedTest {
protected:
    ImportProgressTest()
    {
        showWindow();
        m_field->show();
        m_field->setFocus();
    }
    [[nodiscard]] ProgressCapsule *capsule() const { return m_window.findChild<ProgressCapsule *>(); }
    [[nodiscard]] bool goOn(qint64 number) { return m_progress.mayImport({number, 3, u"notes.txt"_s}); }

    QLineEdit *m_field = new QLineEdit(&m_window);
    ImportProgress m_progress{m_window, 0ms};
};

} // namespace

TEST_F(ImportProgressTest, TellsTheFileAndTakesNoInputButItsOwn)
{
    EXPECT_TRUE(goOn(2));
    ASSERT_NE(capsule(), nullptr);
    EXPECT_EQ(capsule()->accessibleName(), u"File 2 of 3 notes.txt"_s);
    QTest::keyClicks(m_field, u"typed"_s);
    QInputMethodEvent composed;
    composed.setCommitString(u"字"_s);
    QApplication::sendEvent(m_field, &composed);
    EXPECT_EQ(m_field->text(), QString());
    QTest::mouseClick(m_window.windowHandle(), Qt::LeftButton, {}, m_field->geometry().center());
    EXPECT_FALSE(m_field->hasFocus());
    m_progress.finish();
    EXPECT_EQ(capsule(), nullptr);
    EXPECT_TRUE(m_field->hasFocus());
    QTest::keyClicks(m_field, u"typed"_s);
    EXPECT_EQ(m_field->text(), u"typed"_s);
}

TEST_F(ImportProgressTest, StopsWhenAskedAndOnlyThatImport)
{
    const std::function<void()> waysToStop[]{
        [this] { QTest::mouseClick(capsule()->findChild<QPushButton *>(), Qt::LeftButton); },
        [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space); }, // the button has the focus
        [this] { EXPECT_FALSE(m_window.close()); }}; // in the middle of a file: the import ends first
    for (const auto &stop : waysToStop) {
        EXPECT_TRUE(goOn(1));
        stop();
        EXPECT_FALSE(goOn(2));
        m_progress.finish();
    }
    EXPECT_TRUE(m_window.close());
    ImportProgress ofShortImport(m_window, 1h);
    EXPECT_TRUE(ofShortImport.mayImport({1, 3, u"notes.txt"_s}));
    EXPECT_EQ(capsule(), nullptr);
}
