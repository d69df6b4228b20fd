#include "ShownCodingText.h"
#include "platform/UnpairedSurrogates.h"
#include "support/Printing.h"

#include <QAccessible>
#include <QAction>
#include <QClipboard>
#include <QCursor>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QRandomGenerator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>

using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

const QString sentence = u"The quick brown fox jumps over the lazy dog."_s;

const QString paragraphs = (sentence + u' ' + sentence + u'\n').repeated(200);

} // namespace

TEST(CodingTextView, SpeaksOfOffsetsInTheGivenText)
{
    ShownCodingText shown;
    for (const QString &between : {u"\r\n"_s, u"\r"_s, u"\u2028"_s, u"\uFFFC "_s, u" "_s + QChar(0) + u" "_s,
             QChar(0xD83D) + u" "_s, u" \U0001F469\u200D\U0001F469\u200D\U0001F467 "_s,
             u"\n\u0639\u0644\u064A\u0643\u0645\n"_s, u"\n\u0301 "_s}) {
        const QString text = u"before"_s + between + u"target after"_s;
        shown.showText(text);
        const qint64 target = text.indexOf(u"target"_s);
        const QPoint inside = shown.pointAt(target + 2);
        EXPECT_EQ(shown.view.characterAt(inside), target + 2) << between.toStdString();
        QTest::mouseDClick(shown.view.viewport(), Qt::LeftButton, {}, inside);
        EXPECT_EQ(shown.view.selection(), (TextRange{target, 6})) << between.toStdString();
        shown.press(Qt::Key_End, Qt::ControlModifier);
        EXPECT_EQ(shown.view.selection(), (TextRange{text.size(), 0})) << between.toStdString();
        for (const Qt::Key key : {Qt::Key_A, Qt::Key_C})
            shown.press(key, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), replaceUnpairedSurrogates(text));
        EXPECT_FALSE(QApplication::clipboard()->mimeData()->hasHtml());
    }
    shown.showText(u"ab\r\ncd"_s);
    for (const qint64 end : {1, 2, 4, 5}) { // one step over both halves of a line break
        shown.press(Qt::Key_Right, Qt::ShiftModifier);
        EXPECT_EQ(shown.view.selection(), (TextRange{0, end}));
    }
}

TEST(CodingTextView, MovesAndSelectsAsAPlainTextEditDoes)
{
    QString text;
    QRandomGenerator random(8);
    for (int word = 0; word < 900; ++word)
        text += QString(random.bounded(1, 9), QChar(u'a' + random.bounded(26))) + (random.bounded(40) ? u' ' : u'\n');
    ShownCodingText shown(text);
    QTextEdit plain;
    plain.setFont(shown.view.font());
    plain.document()->setDocumentMargin(0);
    plain.setTextInteractionFlags(shown.view.textInteractionFlags());
    plain.setLineWrapMode(QTextEdit::FixedPixelWidth);
    plain.setLineWrapColumnOrWidth(660);
    plain.setPlainText(text);
    plain.show();

    constexpr Qt::Key keys[]{Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End};
    for (int step = 0; step < 400; ++step) {
        if (step % 40 == 0) {
            const int position = random.bounded(int(text.size()));
            shown.view.select({position, 0});
            QTextCursor cursor = plain.textCursor();
            cursor.setPosition(position);
            plain.setTextCursor(cursor);
        }
        const int number = random.bounded(int(std::size(keys)));
        const bool isByWord = random.bounded(4) == 0 && number < 2;
        const Qt::KeyboardModifiers modifiers = (random.bounded(2) ? Qt::ShiftModifier : Qt::NoModifier)
            | (isByWord ? Qt::ControlModifier : Qt::NoModifier);
        shown.press(keys[number], modifiers);
        QTest::keyClick(&plain, keys[number], modifiers);
        const QTextCursor cursor = plain.textCursor();
        const TextRange wanted{cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart()};
        ASSERT_EQ(shown.view.selection(), wanted) << "step " << step << ", key " << keys[number];
        ASSERT_EQ(shown.view.textCursor().position(), cursor.position()) << step;
        const QRect caret = shown.view.characterRectangle(cursor.position());
        ASSERT_TRUE(shown.view.viewport()->rect().contains(caret)) << "it scrolls with the caret: " << step;
    }
}

TEST(CodingTextView, SelectsByMouse)
{
    const QString paragraph = u"word "_s.repeated(8000); // laid out in pieces
    ShownCodingText shown(sentence + u'\n' + paragraph + u"\r\nLast."_s);
    QWidget *page = shown.view.viewport();
    QTest::mouseClick(page, Qt::LeftButton, {}, shown.pointAt(0));
    QTest::mouseClick(page, Qt::LeftButton, Qt::ShiftModifier, shown.pointAt(9));
    EXPECT_EQ(shown.view.selection(), (TextRange{0, 9}));
    QTest::mousePress(page, Qt::LeftButton, {}, shown.pointAt(10));
    QTest::mouseMove(page, shown.pointAt(4));
    EXPECT_EQ(shown.reported.back(), (TextRange{4, 6})) << "while the button is held";
    QTest::mouseRelease(page, Qt::LeftButton, {}, shown.pointAt(4));
    for (const bool isTaken : {true, false}) { // the first Escape clears the selection, the next is for the parents
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, {});
        QApplication::sendEvent(&shown.view, &escape);
        EXPECT_EQ(escape.isAccepted(), isTaken);
        EXPECT_EQ(shown.view.selection(), (TextRange{4, 0}));
    }
    shown.reveal({20'000, 4});
    const QPoint point = shown.pointAt(20'001);
    QTest::mouseDClick(page, Qt::LeftButton, {}, point);
    QTest::mouseClick(page, Qt::LeftButton, {}, point);
    EXPECT_EQ(shown.view.selection(), (TextRange{sentence.size() + 1, paragraph.size() + 2})) << "a third click";
}

TEST(CodingTextView, ScrollsWhileADragIsHeldAtOrBeyondItsEdge)
{
    ShownCodingText shown(paragraphs);
    QWidget *page = shown.view.viewport();
    const int height = page->height();
    // The window may touch the screen's edge, so that the pointer can't leave it.
    const std::pair<int, int> distances[]{
        {height - 2, 100}, {height + 40, 100}, {2, -90}, {-40, -90}, {height - 20, 0}};
    for (const auto &[y, distance] : distances) {
        shown.view.select({}); // a press on the selection would drag the text away
        QTest::mousePress(page, Qt::LeftButton, {}, QPoint(200, height / 2));
        const int before = shown.scrolled();
        QCursor::setPos(page->mapToGlobal(QPoint(200, y))); // where the pointer stays while the page scrolls
        QTest::mouseMove(page, QPoint(200, y));
        const auto isScrolled = [&] {
            const int moved = shown.scrolled() - before;
            return distance == 0 ? moved != 0 : moved / distance > 0;
        };
        EXPECT_EQ(QTest::qWaitFor(isScrolled, distance == 0 ? 120 : 5'000), distance != 0) << "at " << y;
        QTest::mouseRelease(page, Qt::LeftButton, {}, QPoint(200, y));
        const int scrolled = shown.scrolled();
        QTest::qWait(120);
        EXPECT_EQ(shown.scrolled(), scrolled) << "after the button was released";
    }
}

TEST(CodingTextView, StartsANewTextAtTheTopAndResetsTheSelectionByAToken)
{
    ShownCodingText shown(paragraphs);
    shown.scrollTo(900);
    shown.view.select({50, 10});
    ++shown.content.resetToken;
    for (const TextRange left : {TextRange{0, 0}, TextRange{50, 10}}) { // the second time the token is the same
        shown.apply();
        EXPECT_EQ(shown.view.selection(), left);
        EXPECT_EQ(shown.scrolled(), 900);
        shown.view.select({50, 10});
    }
    shown.reported.clear();
    shown.content = {paragraphs + u'x', {}, 2, TextRange{3000, 10}, 7};
    shown.apply();
    EXPECT_EQ(shown.scrolled(), 0);
    EXPECT_THAT(shown.reported, ElementsAre(TextRange{0, 0}));
    EXPECT_TRUE(shown.later.empty()) << "a reveal that comes with a text waits for the next call";
    shown.apply();
    EXPECT_GT(shown.scrolled(), 0);
    EXPECT_EQ(shown.later.size(), 1U);
}

TEST(CodingTextView, ChangesPassagesWithoutMovingAnythingAndDrawsThemAsAfresh)
{
    QRandomGenerator random(4);
    const QString mixed = u"\u0639\u0644\u064A\u0643\u0645 mixed \u05E9\u05DC\u05D5\u05DD.\r\n"_s;
    ShownCodingText shown(paragraphs + mixed.repeated(9) + paragraphs);
    const qint64 middle = shown.content.text.indexOf(mixed);
    shown.view.select({middle, 40});
    shown.view.scrollTo({middle, 40});
    shown.reported.clear();
    auto &highlights = shown.content.highlights;
    for (int step = 0; step < 100; ++step) {
        const int before = shown.scrolled();
        if (!highlights.isEmpty() && random.bounded(3) == 0)
            highlights.removeAt(random.bounded(int(highlights.size())));
        else
            highlights.append({{}, {middle + random.bounded(-900, 900), random.bounded(1, 400)},
                random.bounded(2) ? u"#34C759"_s : u"#5E5CE6"_s, {}});
        shown.apply();
        ASSERT_EQ(shown.scrolled(), before);
        shown.scrollTo(before + (step < 50 ? 0 : random.bounded(-150, 150)));
        const QImage after = shown.view.grab().toImage(); // where only what was asked for has been painted
        shown.view.viewport()->repaint();
        ASSERT_EQ(after, shown.view.grab().toImage()) << step;
    }
    EXPECT_EQ(shown.view.selection(), (TextRange{middle, 40}));
    EXPECT_TRUE(shown.reported.empty());
}

TEST(CodingTextView, FlashesARevealedPassageInItsColourForAMoment)
{
    ShownCodingText shown(sentence);
    for (const TextRange outside :
        {TextRange{-1, 5}, {40, 5}, {44, 1}, {4, 0}, {4, std::numeric_limits<qint64>::max()}})
        shown.reveal(outside);
    EXPECT_TRUE(shown.later.empty());
    shown.content.highlights = {
        {{}, {4, 5}, u"#00FF00"_s, {}}, {{}, {4, 5}, u"#0000FF"_s, {}}, {{}, {20, 4}, u"nonsense"_s, {}}};
    shown.apply();
    const QImage calm = shown.picture();
    for (const qint64 position : {3, 4, 8, 9})
        EXPECT_EQ(shown.colorBehind(position).red() < 230, position >= 4 && position < 9) << position;
    shown.reveal({4, 5});
    shown.apply();
    EXPECT_EQ(shown.later.size(), 1U) << "the same token again";
    EXPECT_GT(shown.colorBehind(5).green(), shown.colorBehind(5).blue()) << "of the first with that range";
    shown.reveal({20, 4});
    EXPECT_GT(shown.colorBehind(21).red(), shown.colorBehind(21).blue()) << "yellow without a colour of its own";
    const QImage flashed = shown.picture();
    shown.later.at(0)();
    EXPECT_EQ(shown.picture(), flashed) << "only the last reveal ends the flash";
    shown.later.at(1)();
    EXPECT_EQ(shown.picture(), calm);
    shown.reveal({4, 5}); // which a change of the passages ends at once
    shown.content.highlights.append({{}, {4, 0}, u"#0000FF"_s, {}});
    shown.apply();
    EXPECT_EQ(shown.picture(), calm);
}

TEST(CodingTextView, OffersWhatCanBeDoneAtACharacterAndDoesIt)
{
    ShownCodingText shown(sentence);
    const std::array ids{QUuid::createUuid(), QUuid::createUuid()};
    shown.content.highlights = {{{}, {4, 5}, u"no colour"_s, u"Unseen"_s}, {ids[0], {4, 5}, u"#FF0000"_s, u"R&D"_s},
        {ids[1], {4, 11}, u"#0000FF"_s, u"Newer"_s}};
    shown.apply();
    int added = 0;
    std::vector<QUuid> removed;
    QObject::connect(&shown.view, &CodingTextView::addCodeRequested, &shown.view, [&added] { ++added; });
    QObject::connect(&shown.view, &CodingTextView::removeCodingRequested, &shown.view,
        [&removed](const QUuid &codingID) { removed.push_back(codingID); });
    const QStringList older{u"Remove Code — R&&D"_s, {}};
    const QStringList newer{u"Add Code…"_s, u"Remove Code — Newer"_s, {}};
    const std::pair<qint64, QStringList> offers[]{
        {0, {}}, {3, {}}, {4, older}, {9, older}, {10, newer}, {15, newer}, {16, {}}};
    for (const auto &[position, own] : offers) {
        shown.view.select({10, 5});
        const std::unique_ptr<QMenu> menu(shown.view.createContextMenu(position));
        QStringList titles;
        for (QAction *action : menu->actions()) {
            titles += action->text();
            action->trigger();
        }
        EXPECT_EQ(titles, (own + QStringList{u"Copy"_s, u"Select All"_s})) << position;
        EXPECT_EQ(shown.view.selection(), (TextRange{0, sentence.size()}));
    }
    EXPECT_EQ(added, 2);
    EXPECT_THAT(removed, ElementsAre(ids[0], ids[0], ids[1], ids[1]));
    EXPECT_EQ(QApplication::clipboard()->text(), u"brown"_s);
}

TEST(AccessibleCodingText, ReadsSelectsScrollsAndTellsWhereEveryCharacterIs)
{
    const QString line = u"Filling line of text.\n"_s;
    const QString text = u"First words here. Second sentence.\r\n"_s + line.repeated(2000)
        + u"Last e\u0301 one, \u05E9\u05DC\u05D5\u05DD\t(\u05D0) \u0639\u0644\u064A\u0643\u0645."_s;
    const qint64 last = text.indexOf(u"Last"_s);
    ShownCodingText shown(text);
    QAccessibleInterface &interface = *QAccessible::queryAccessibleInterface(&shown.view);
    QAccessibleTextInterface &texts = *interface.textInterface();
    EXPECT_EQ(interface.text(QAccessible::Value), text);
    EXPECT_TRUE(interface.state().readOnly);
    EXPECT_EQ(texts.text(-1, 5), text.mid(5)) << "-1 is the end";
    int start = -1;
    int end = -1;
    const std::tuple<QAccessible::TextBoundaryType, qint64, QString, QString, QString> units[]{
        {QAccessible::CharBoundary, 0, {}, u"F"_s, u"i"_s},
        {QAccessible::CharBoundary, last + 5, u" "_s, u"e\u0301"_s, u" "_s},
        {QAccessible::CharBoundary, 34, u"."_s, u"\r\n"_s, u"F"_s},
        {QAccessible::CharBoundary, text.size(), u"."_s, {}, {}},
        {QAccessible::WordBoundary, 7, u" "_s, u"words"_s, u" "_s},
        {QAccessible::SentenceBoundary, 3, {}, u"First words here. "_s, u"Second sentence.\r\n"_s},
        {QAccessible::LineBoundary, 3, {}, text.left(36), line},
        {QAccessible::LineBoundary, last + 2, line, text.mid(last), {}}, // never laid out before
        {QAccessible::ParagraphBoundary, 3, {}, text.left(36), line}, {QAccessible::NoBoundary, 3, {}, text, {}}};
    for (const auto &[type, offset, before, at, after] : units) {
        SCOPED_TRACE(testing::Message() << "type " << type << " at " << offset);
        EXPECT_EQ(texts.textAtOffset(int(offset), type, &start, &end), at);
        EXPECT_EQ(texts.text(start, end), at);
        EXPECT_EQ(texts.textBeforeOffset(int(offset), type, &start, &end), before);
        EXPECT_EQ(texts.text(start, end), before);
        EXPECT_EQ(texts.textAfterOffset(int(offset), type, &start, &end), after);
        EXPECT_EQ(texts.text(start, end), after);
    }
    texts.setSelection(0, 11, 6);
    texts.selection(0, &start, &end);
    EXPECT_EQ(texts.text(start, end), u"words"_s);
    EXPECT_EQ(texts.selectionCount(), 1);
    texts.removeSelection(0);
    EXPECT_EQ(texts.selectionCount(), 0);
    texts.setCursorPosition(int(last));
    EXPECT_EQ(texts.cursorPosition(), last);
    texts.scrollToSubstring(int(last), int(text.size()));
    const QRect page(shown.view.viewport()->mapToGlobal(QPoint()), shown.view.viewport()->size());
    for (int offset = int(last); offset < text.size(); ++offset) {
        const QRect rectangle = texts.characterRect(offset);
        ASSERT_TRUE(page.contains(rectangle)) << offset;
        if (rectangle.width() > 3 && !text[offset].isMark()) {
            ASSERT_EQ(texts.offsetAtPoint(rectangle.center()), offset);
        }
    }
    EXPECT_LT(texts.characterRect(0).bottom(), page.top());
    EXPECT_EQ(texts.offsetAtPoint(page.topLeft() - QPoint(5, 5)), -1);
    EXPECT_TRUE(texts.characterRect(int(text.size()) + 1).isNull());
}
