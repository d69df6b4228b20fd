#include "ShownCodingText.h"
#include "support/Printing.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QCursor>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QRandomGenerator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <limits>

using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

const QString sentence = u"The quick brown fox jumps over the lazy dog."_s;

TextHighlight passage(
    qint64 location, qint64 length, const QString &colorHex = u"#FF0000"_s, const QString &name = u"Trust"_s)
{
    return {QUuid::createUuid(), {location, length}, colorHex, name};
}

QString paragraphs(int count)
{
    QString text;
    for (int number = 0; number < count; ++number)
        text += u"Paragraph %1: %2 %2\n"_s.arg(number).arg(sentence);
    return text;
}

QStringList titles(const QMenu &menu)
{
    QStringList result;
    for (const QAction *action : menu.actions())
        result += action->isSeparator() ? u"-"_s : action->text();
    return result;
}

/// The colour of the page just above the underline, behind a character.
QColor behind(ShownCodingText &shown, qint64 position)
{
    const QRect rectangle = shown.view.characterRectangle(position);
    return shown.colorAt({rectangle.center().x(), rectangle.top()});
}

/// How many pixels below a character are nearly blue.
int blueUnderline(ShownCodingText &shown, qint64 position)
{
    const QRect rectangle = shown.view.characterRectangle(position);
    const QImage image = shown.picture();
    int count = 0;
    for (int y = rectangle.bottom() - 2; y < rectangle.bottom() + 6; ++y) {
        const QColor color = image.pixelColor(rectangle.center().x(), y);
        count += color.blue() > 240 && color.red() < 40 && color.red() > 5 ? 1 : 0;
    }
    return count;
}

/// Whether that colour, so opaque, lies over the page behind a character.
bool isTinted(ShownCodingText &shown, qint64 position, const QColor &color, double alpha)
{
    const QColor base = shown.view.palette().color(QPalette::Base);
    const QColor seen = behind(shown, position);
    const auto isMixed = [alpha](int below, int above, int mixed) {
        return std::abs(below + (above - below) * alpha - mixed) <= 2;
    };
    return isMixed(base.red(), color.red(), seen.red()) && isMixed(base.green(), color.green(), seen.green())
        && isMixed(base.blue(), color.blue(), seen.blue());
}

} // namespace

TEST(CodingTextView, SpeaksOfOffsetsInTheGivenText)
{
    ShownCodingText shown({});
    for (const QString &between : {u"\r\n"_s, u"\r"_s, u"\u2028"_s, u"\uFFFC "_s, u" "_s + QChar(0) + u" "_s,
             QChar(0xD83D) + u" "_s, u" \U0001F469\u200D\U0001F469\u200D\U0001F467 "_s,
             u"\n\u0639\u0644\u064A\u0643\u0645\n"_s, u"\n\u0301 "_s}) {
        const QString text = u"before"_s + between + u"target after"_s;
        shown.content.text = text;
        shown.apply();
        const qint64 target = text.indexOf(u"target"_s);
        const QPoint inside = shown.pointAt(target + 2);
        EXPECT_EQ(shown.view.characterAt(inside), target + 2) << between.toStdString();
        QTest::mouseDClick(shown.view.viewport(), Qt::LeftButton, {}, inside);
        EXPECT_EQ(shown.view.selection(), (TextRange{target, 6})) << between.toStdString();
        shown.press(Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), u"target"_s);
        shown.press(Qt::Key_End, Qt::ControlModifier);
        EXPECT_EQ(shown.view.selection(), (TextRange{text.size(), 0})) << between.toStdString();
    }
    shown.content.text = u"ab\r\ncd"_s;
    shown.apply();
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
    plain.setReadOnly(true);
    plain.setTextInteractionFlags(shown.view.textInteractionFlags());
    plain.setLineWrapMode(QTextEdit::FixedPixelWidth);
    plain.setLineWrapColumnOrWidth(660);
    plain.setPlainText(text);
    plain.show();

    constexpr std::array keys{Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End};
    for (int step = 0; step < 400; ++step) {
        if (step % 40 == 0) {
            const int position = random.bounded(int(text.size()));
            shown.view.select({position, 0});
            QTextCursor cursor = plain.textCursor();
            cursor.setPosition(position);
            plain.setTextCursor(cursor);
        }
        const Qt::Key key = keys[size_t(random.bounded(int(keys.size())))];
        const bool isByWord = random.bounded(4) == 0 && (key == Qt::Key_Left || key == Qt::Key_Right);
        const Qt::KeyboardModifiers modifiers = (random.bounded(2) ? Qt::ShiftModifier : Qt::NoModifier)
            | (isByWord ? Qt::ControlModifier : Qt::NoModifier);
        shown.press(key, modifiers);
        QTest::keyClick(&plain, key, modifiers);
        const QTextCursor cursor = plain.textCursor();
        const TextRange wanted{cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart()};
        ASSERT_EQ(shown.view.selection(), wanted) << "step " << step << ", key " << key;
        ASSERT_EQ(shown.reported.back(), wanted);
        ASSERT_EQ(shown.view.textCursor().position(), cursor.position()) << step;
        const QRect caret = shown.view.characterRectangle(cursor.position());
        ASSERT_TRUE(shown.view.viewport()->rect().contains(caret)) << "it scrolls with the caret: " << step;
    }
}

TEST(CodingTextView, SelectsByMouse)
{
    ShownCodingText shown(sentence + u"\nSecond line."_s);
    QWidget *page = shown.view.viewport();
    shown.click(0);
    shown.click(9, Qt::ShiftModifier);
    EXPECT_EQ(shown.selectedText(), u"The quick"_s);
    QTest::mousePress(page, Qt::LeftButton, {}, shown.pointAt(10));
    QTest::mouseMove(page, shown.pointAt(15));
    EXPECT_EQ(shown.selectedText(), u"brown"_s) << "while the button is held";
    QTest::mouseMove(page, shown.pointAt(4));
    QTest::mouseRelease(page, Qt::LeftButton, {}, shown.pointAt(4));
    EXPECT_EQ(shown.reported.back(), (TextRange{4, 6}));
    for (const bool isTaken : {true, false}) { // the first Escape clears the selection, the next is for the parents
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, {});
        QApplication::sendEvent(&shown.view, &escape);
        EXPECT_EQ(escape.isAccepted(), isTaken);
        EXPECT_EQ(shown.view.selection(), (TextRange{4, 0}));
    }
}

TEST(CodingTextView, SelectsTheWholeParagraphByAThirdClickThoughItIsLaidOutInPieces)
{
    const QString paragraph = u"word "_s.repeated(8000);
    ShownCodingText shown(u"First.\n"_s + paragraph + u"\r\nLast."_s);
    QWidget *page = shown.view.viewport();
    shown.reveal({20'000, 4});
    const QPoint point = shown.pointAt(20'001);
    QTest::mouseDClick(page, Qt::LeftButton, {}, point);
    EXPECT_EQ(shown.selectedText(), u"word"_s);
    QTest::mouseClick(page, Qt::LeftButton, {}, point);
    EXPECT_EQ(shown.view.selection(), (TextRange{7, paragraph.size() + 2}));
}

TEST(CodingTextView, ScrollsWhileADragIsHeldAtOrBeyondItsEdge)
{
    ShownCodingText shown(paragraphs(60));
    QWidget *page = shown.view.viewport();
    const auto drag = [&](int y, const std::function<bool()> &isScrolled) {
        const QPoint point(200, y);
        shown.view.select({}); // a press on the selection would drag the text away
        QTest::mousePress(page, Qt::LeftButton, {}, QPoint(200, page->height() / 2));
        const qint64 start = shown.view.selection().location;
        QCursor::setPos(page->mapToGlobal(point)); // where the pointer stays while the page scrolls
        QTest::mouseMove(page, point);
        EXPECT_TRUE(QTest::qWaitFor(isScrolled)) << "at " << y;
        QTest::mouseRelease(page, Qt::LeftButton, {}, point);
        const TextRange selected = shown.view.selection();
        EXPECT_TRUE(selected.location == start || selected.end() == start);
        const int scrolled = shown.scrolled();
        QTest::qWait(120);
        EXPECT_EQ(shown.scrolled(), scrolled) << "after the button was released";
    };
    for (const int beyond : {-2, 40}) // the window may touch the screen's edge, so that the pointer can't leave it
        drag(page->height() + beyond, [&, from = shown.scrolled()] { return shown.scrolled() > from + 100; });
    for (const int y : {2, -40})
        drag(y, [&, from = shown.scrolled()] { return shown.scrolled() < from - 90; });
    const int scrolled = shown.scrolled();
    shown.view.select({});
    QTest::mousePress(page, Qt::LeftButton, {}, QPoint(200, 200));
    QTest::mouseMove(page, QPoint(200, page->height() - 20));
    QTest::qWait(120);
    EXPECT_EQ(shown.scrolled(), scrolled) << "not near the edge already";
    QTest::mouseRelease(page, Qt::LeftButton, {}, QPoint(200, 200));
}

TEST(CodingTextView, CopiesTheTextAsItWasGiven)
{
    const QString text = u"a\r\nb\u2028c\u2029d\u00A0e\tf\uFFFCg\uFDD0h"_s;
    ShownCodingText shown(text);
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_C, Qt::Key_X, Qt::Key_V})
        shown.press(key, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), text);
    EXPECT_EQ(shown.view.text(), text) << "no key changes it";

    shown.content.text = u"x"_s + QChar(0xD83D) + u"y\U0001F600"_s + QChar(0xDE00);
    shown.apply();
    shown.view.selectAll();
    shown.view.copy();
    EXPECT_EQ(QApplication::clipboard()->text(), u"x\uFFFDy\U0001F600\uFFFD"_s);
    EXPECT_FALSE(QApplication::clipboard()->mimeData()->hasHtml());
}

TEST(CodingTextView, StartsANewTextAtTheTopAndResetsTheSelectionByAToken)
{
    ShownCodingText shown(paragraphs(60));
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
    shown.content = {paragraphs(61), {}, 2, TextRange{3000, 10}, 7};
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
    ShownCodingText shown(paragraphs(200) + mixed.repeated(9) + paragraphs(200));
    const qint64 middle = shown.content.text.indexOf(mixed);
    shown.view.select({middle, 40});
    shown.view.scrollTo({middle, 40});
    shown.reported.clear();
    const QImage bare = shown.picture();
    auto &highlights = shown.content.highlights;
    for (int step = 0; step < 100; ++step) {
        const int before = shown.scrolled();
        if (!highlights.isEmpty() && random.bounded(3) == 0)
            highlights.removeAt(random.bounded(int(highlights.size())));
        else
            highlights.append(passage(middle + random.bounded(-900, 900), random.bounded(1, 400),
                random.bounded(2) ? u"#34C759"_s : u"#5E5CE6"_s));
        shown.apply();
        ASSERT_EQ(shown.scrolled(), before);
        if (step == 50) { // from here on it is scrolled as well
            EXPECT_NE(shown.picture(), bare);
            highlights.clear();
            shown.apply();
            EXPECT_EQ(shown.picture(), bare);
        }
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
        passage(4, 5, u"#00FF00"_s), passage(4, 5, u"#0000FF"_s), passage(20, 4, u"nonsense"_s)};
    shown.apply();
    const QImage calm = shown.picture();
    for (const qint64 position : {3, 4, 8, 9})
        EXPECT_TRUE(isTinted(shown, position, Qt::blue, position >= 4 && position < 9 ? 0.16 : 0)) << position;
    EXPECT_EQ(blueUnderline(shown, 2), 0);
    EXPECT_GE(blueUnderline(shown, 5), 1);
    EXPECT_LE(blueUnderline(shown, 5), 2);
    shown.reveal({4, 5});
    ASSERT_EQ(shown.later.size(), 1U);
    EXPECT_TRUE(isTinted(shown, 5, Qt::green, 0.45)) << "the first with that range gives the colour";
    shown.apply();
    EXPECT_EQ(shown.later.size(), 1U) << "the same token again";
    shown.reveal({20, 4});
    EXPECT_TRUE(isTinted(shown, 21, QColor(0xFF, 0xCC, 0), 0.45)) << "no colour of its own";
    const QImage flashed = shown.picture();
    shown.later.at(0).second();
    EXPECT_EQ(shown.picture(), flashed) << "only the last reveal ends the flash";
    shown.later.at(1).second();
    EXPECT_EQ(shown.picture(), calm);

    shown.reveal({4, 5}); // and a change of the passages or of the text ends it at once
    shown.content.highlights.append(passage(4, 0));
    shown.apply();
    EXPECT_EQ(shown.picture(), calm);
    shown.reveal({4, 5});
    shown.content.text += u' ';
    shown.apply();
    EXPECT_EQ(shown.picture(), calm);
}

TEST(CodingTextView, OffersWhatCanBeDoneAtACharacterAndDoesIt)
{
    ShownCodingText shown(sentence);
    shown.content.highlights = {passage(4, 5, u"no colour"_s, u"Unseen"_s), passage(4, 5, u"#FF0000"_s, u"R&D"_s),
        passage(4, 11, u"#0000FF"_s, u"Newer"_s)};
    shown.apply();
    shown.view.select({10, 5});
    const auto own = [&shown](qint64 position) {
        const std::unique_ptr<QMenu> menu(shown.view.createContextMenu(position));
        return titles(*menu).mid(0, titles(*menu).size() - 2); // Copy and Select All
    };
    EXPECT_EQ(own(10).first(), u"Remove Code — Newer"_s) << "nobody listens who could add a code";
    int added = 0;
    std::vector<QUuid> removed;
    QObject::connect(&shown.view, &CodingTextView::addCodeRequested, &shown.view, [&added] { ++added; });
    QObject::connect(&shown.view, &CodingTextView::removeCodingRequested, &shown.view,
        [&removed](const QUuid &codingID) { removed.push_back(codingID); });
    for (const qint64 position : {0, 3, 16})
        EXPECT_EQ(own(position), QStringList()) << position;
    for (const qint64 position : {4, 9})
        EXPECT_EQ(own(position), (QStringList{u"Remove Code — R&&D"_s, u"-"_s})) << position;
    for (const qint64 position : {10, 15})
        EXPECT_EQ(own(position), (QStringList{u"Add Code…"_s, u"Remove Code — Newer"_s, u"-"_s})) << position;

    QWidget *page = shown.view.viewport();
    const QPoint point = shown.pointAt(12);
    QContextMenuEvent event(QContextMenuEvent::Mouse, point, page->mapToGlobal(point));
    QApplication::sendEvent(page, &event);
    auto *menu = shown.view.findChild<QMenu *>(u"textContextMenu"_s);
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(
        titles(*menu), (QStringList{u"Add Code…"_s, u"Remove Code — Newer"_s, u"-"_s, u"Copy"_s, u"Select All"_s}));
    for (const int entry : {0, 1, 3})
        menu->actions()[entry]->trigger();
    EXPECT_EQ(added, 1);
    EXPECT_THAT(removed, ElementsAre(shown.content.highlights[2].codingID));
    EXPECT_EQ(QApplication::clipboard()->text(), u"brown"_s);
    menu->actions()[4]->trigger();
    EXPECT_EQ(shown.view.selection(), (TextRange{0, sentence.size()}));
    menu->close();
}

TEST(CodingTextView, OutlinesFindMatchesAndSelectsOne)
{
    ShownCodingText shown(sentence.repeated(200));
    const QImage bare = shown.picture();
    std::vector<TextRange> matches;
    for (qint64 at = shown.content.text.indexOf(u"fox"_s); at >= 0; at = shown.content.text.indexOf(u"fox"_s, at + 1))
        matches.push_back({at, 3});
    const qint64 size = shown.content.text.size();
    std::vector<TextRange> given{{-1, 3}, {size - 2, 3}, {20, 0}, matches[3]}; // outside, empty, twice
    given.insert(given.end(), matches.rbegin(), matches.rend());
    shown.view.setFindMatches(given);
    EXPECT_EQ(shown.view.findMatches(), matches);
    const QImage outlined = shown.picture();
    EXPECT_NE(outlined, bare);
    shown.view.setFindMatches({matches.begin() + 1, matches.end()});
    EXPECT_NE(shown.picture(), outlined);
    shown.view.setFindMatches(matches);
    EXPECT_EQ(shown.picture(), outlined);
    for (const size_t index : {size_t(150), matches.size()}) { // the last one doesn't exist
        shown.view.selectFindMatch(index);
        EXPECT_EQ(shown.view.selection(), matches[150]);
    }
    EXPECT_TRUE(shown.view.viewport()->rect().contains(shown.view.characterRectangle(matches[150].location)));
}
