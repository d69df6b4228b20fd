#include "workspace/lists/MemoBar.h"

#include "kit/theme/ThemedTest.h"

#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

class MemoBarTest : public ThemedTest {
protected:
    MemoBarTest() : m_bar(new MemoBar(u"Code memo…"_s))
    {
        auto *column = new QVBoxLayout(&m_window);
        column->addWidget(m_bar);
        column->addStretch();
        QObject::connect(m_bar, &MemoBar::committed, m_bar, [this](const QString &text) { m_commits.append(text); });
        showWindow();
    }
    ~MemoBarTest() override { delete m_bar; } // it commits into this
    [[nodiscard]] QTextEdit &editor() const { return *m_bar->findChild<QTextEdit *>(); }
    [[nodiscard]] QPushButton &button() const { return *m_bar->findChild<QPushButton *>(); }
    void clearByKeyboard() const
    {
        editor().setFocus();
        QTest::keyClick(&editor(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&editor(), Qt::Key_Delete);
    }

    MemoBar *m_bar;
    QStringList m_commits;
};

} // namespace

TEST_F(MemoBarTest, EveryKeystrokeIsCommittedOnceAndNothingThatIsSet)
{
    m_bar->setText(u"x"_s);
    editor().moveCursor(QTextCursor::End);
    QTest::keyClicks(&editor(), u"ab"_s);
    QTest::keyClick(&editor(), Qt::Key_Return);
    QTest::keyClick(&editor(), Qt::Key_Backspace);
    EXPECT_EQ(m_commits, (QStringList{u"xa"_s, u"xab"_s, u"xab\n"_s, u"xab"_s}));
    m_commits.clear();
    m_bar->setText(u"memo of another"_s);
    QTest::keyClick(&editor(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_commits, QStringList()) << "it can't be undone into the next";
    EXPECT_EQ(m_bar->text(), u"memo of another"_s);
    EXPECT_EQ(editor().toPlainText(), u"memo of another"_s);
}

TEST_F(MemoBarTest, TextIsKeptToTheLastUnit)
{
    const QString memo = u"no\u00A0break \u2028 crlf\r\n\ttab 😀"_s;
    m_bar->setText(memo);
    EXPECT_EQ(m_bar->text(), memo); // as long as nothing is typed
    QTest::keyClicks(&editor(), u"a"_s);
    EXPECT_TRUE(m_bar->text().startsWith(u"ano\u00A0break "_s)) << m_bar->text().toStdString();
    EXPECT_TRUE(m_bar->text().endsWith(u"\n\ttab 😀"_s));
}

TEST_F(MemoBarTest, OpensForTypingAndCollapsesWhenItIsClearedUnlessTheUserOpenedIt)
{
    m_bar->setText(u"content"_s);
    clearByKeyboard();
    EXPECT_FALSE(editor().isVisible());
    EXPECT_TRUE(button().hasFocus()); // the keyboard's place isn't lost
    EXPECT_EQ(m_commits, QStringList(QString()));

    QTest::mouseClick(&button(), Qt::LeftButton);
    EXPECT_TRUE(editor().hasFocus());
    EXPECT_FALSE(button().isVisible());
    QTest::keyClicks(&editor(), u"again"_s);
    clearByKeyboard();
    m_bar->setText({}); // also when another thing's memo is shown
    EXPECT_TRUE(editor().isVisible());
    QTest::keyClick(&editor(), Qt::Key_Tab);
    EXPECT_FALSE(editor().hasFocus());
    m_commits.clear();
    m_bar->hide();
    EXPECT_EQ(m_commits, QStringList(QString())) << "once more when it disappears";
    m_bar->show();
    EXPECT_TRUE(button().isVisible());
}

TEST_F(MemoBarTest, ShowsItsEditorForContentOnly)
{
    for (const QString &blank : {QString(), u" \t\u3000"_s, u"\n\u2028\r\n"_s}) {
        m_bar->setText(blank);
        EXPECT_TRUE(button().isVisible() && !editor().isVisible());
    }
    for (const QString &content : {u" a\n"_s, u"\u200B"_s}) {
        m_bar->setText(content);
        EXPECT_TRUE(editor().isVisible() && !button().isVisible());
    }
}
