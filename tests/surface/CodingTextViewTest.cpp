#include "ShownCodingText.h"
#include "support/Cases.h"
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

#include <limits>

using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

constexpr qint64 huge = std::numeric_limits<qint64>::max();
constexpr qint64 least = std::numeric_limits<qint64>::min();

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

QColor over(const QColor &base, const QColor &color, double alpha)
{
    const auto mixed = [alpha](int below, int above) { return int(below + (above - below) * alpha + 0.5); };
    return QColor(mixed(base.red(), color.red()), mixed(base.green(), color.green()), mixed(base.blue(), color.blue()));
}

bool isNear(const QColor &one, const QColor &other)
{
    return std::abs(one.red() - other.red()) <= 2 && std::abs(one.green() - other.green()) <= 2
        && std::abs(one.blue() - other.blue()) <= 2;
}

struct OffsetCase {
    const char *name;
    QString between;
};
using Offsets = testing::TestWithParam<OffsetCase>;

} // namespace

// Offsets

TEST_P(Offsets, AreTheTextsOwnOnTheSurface)
{
    const QString text = u"before"_s + GetParam().between + u"target after"_s;
    const qint64 target = text.indexOf(u"target"_s);
    ShownCodingText shown(text);
    const QPoint inside = shown.pointAt(target + 2);
    EXPECT_EQ(shown.view.characterAt(inside), target + 2);

    QTest::mouseDClick(shown.view.viewport(), Qt::LeftButton, {}, inside);
    EXPECT_EQ(shown.view.selection(), (TextRange{target, 6}));
    shown.press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"target"_s);

    shown.press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(shown.view.selection(), (TextRange{text.size(), 0}));
    shown.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(shown.view.selection(), (TextRange{0, text.size()}));
}

INSTANTIATE_TEST_SUITE_P(Reader, Offsets,
    testing::Values(OffsetCase{"pair_of_return_and_line_feed", u"\r\n"_s}, OffsetCase{"lone_return", u"\r"_s},
        OffsetCase{"line_separator", u"\u2028"_s}, OffsetCase{"object_replacement", u"\uFFFC "_s},
        OffsetCase{"null", u" "_s + QChar(0) + u" "_s}, OffsetCase{"high_half", QChar(0xD83D) + u" "_s},
        OffsetCase{"emoji", u" \U0001F469\u200D\U0001F469\u200D\U0001F467 "_s},
        OffsetCase{"arabic_line", u"\n\u0639\u0644\u064A\u0643\u0645\n"_s},
        OffsetCase{"combining_mark_at_the_start_of_a_line", u"\n\u0301 "_s}),
    rowName);

TEST(CodingTextView, ReportsNoHalfOfALineBreak)
{
    ShownCodingText shown(u"ab\r\ncd"_s);
    shown.click(0);
    for (int step = 0; step < 2; ++step)
        shown.press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(shown.view.selection(), (TextRange{0, 2}));
    shown.press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(shown.view.selection(), (TextRange{0, 4})) << "one step over both";
    shown.press(Qt::Key_Home);
    shown.press(Qt::Key_Up);
    shown.press(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(shown.view.selection(), (TextRange{0, 2}));
}

// Selection

TEST(CodingTextView, SelectsByMouseAndKeysAndReportsEachChange)
{
    ShownCodingText shown(sentence + u"\nSecond line.\nThird."_s);
    QWidget *page = shown.view.viewport();
    shown.click(4);
    shown.press(Qt::Key_Right, Qt::ShiftModifier);
    shown.press(Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(shown.selectedText(), u"quick "_s);
    shown.press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_THAT(shown.reported, ElementsAre(TextRange{4, 0}, TextRange{4, 1}, TextRange{4, 6}, TextRange{4, 5}));
    shown.press(Qt::Key_Down);
    EXPECT_EQ(shown.view.selection().length, 0);
    EXPECT_GT(shown.view.selection().location, sentence.size());
    shown.click(0);
    shown.click(9, Qt::ShiftModifier);
    EXPECT_EQ(shown.selectedText(), u"The quick"_s);

    QTest::mousePress(page, Qt::LeftButton, {}, shown.pointAt(10));
    QTest::mouseMove(page, shown.pointAt(15));
    EXPECT_EQ(shown.selectedText(), u"brown"_s) << "while the button is held";
    QTest::mouseMove(page, shown.pointAt(4));
    QTest::mouseRelease(page, Qt::LeftButton, {}, shown.pointAt(4));
    EXPECT_EQ(shown.selectedText(), u"quick "_s);
    EXPECT_EQ(shown.reported.back(), (TextRange{4, 6}));
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

TEST(CodingTextView, ScrollsWhileADragLeavesThePage)
{
    ShownCodingText shown(paragraphs(300));
    QWidget *page = shown.view.viewport();
    QTest::mousePress(page, Qt::LeftButton, {}, shown.pointAt(3));
    const QPoint below(200, page->height() + 40);
    QCursor::setPos(page->mapToGlobal(below)); // where the pointer stays while the page scrolls
    QTest::mouseMove(page, below);
    EXPECT_TRUE(QTest::qWaitFor([&shown] { return shown.scrolled() > 200; }));
    QTest::mouseRelease(page, Qt::LeftButton, {}, QPoint(200, page->height() - 5));
    EXPECT_EQ(shown.view.selection().location, 3);
    EXPECT_GT(shown.view.characterRectangle(shown.view.selection().end()).top(), page->height() - 80);
}

TEST(CodingTextView, ClearsTheSelectionByTheFirstEscapeAndLeavesTheNextToItsParents)
{
    ShownCodingText shown(sentence);
    shown.view.select({4, 5});
    for (const bool isTaken : {true, false}) {
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, {});
        QApplication::sendEvent(&shown.view, &escape);
        EXPECT_EQ(escape.isAccepted(), isTaken);
        EXPECT_EQ(shown.view.selection(), (TextRange{4, 0}));
    }
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

// Updates

TEST(CodingTextView, StartsANewTextAtTheTopWithNothingSelected)
{
    ShownCodingText shown(paragraphs(200));
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
    shown.content.text = paragraphs(201);
    shown.content.revealRange = TextRange{9000, 10};
    shown.content.revealToken = 7;
    shown.content.resetToken = 2;
    shown.apply();
    EXPECT_EQ(shown.scrolled(), 0);
    EXPECT_THAT(shown.reported, ElementsAre(TextRange{0, 0}));
    EXPECT_TRUE(shown.later.empty()) << "a reveal that comes with a text waits";
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

TEST(CodingTextView, SurvivesAnyRange)
{
    ShownCodingText shown(sentence);
    const QImage bare = shown.picture();
    std::vector<TextRange> ranges{{0, 45}, {44, 1}, {3, huge}, {0, 0}};
    for (const qint64 location : {least, qint64(-1), qint64(44), huge}) {
        for (const qint64 length : {least, qint64(-1), qint64(0), qint64(1), huge})
            ranges.push_back({location, length});
    }
    for (const TextRange range : ranges) {
        shown.reveal(range);
        shown.view.setFindMatches({range});
        shown.view.select(range);
        shown.view.select({});
    }
    EXPECT_TRUE(shown.later.empty()) << "a range that isn't wholly inside is dropped";
    EXPECT_EQ(shown.picture(), bare);
    shown.view.select({40, huge});
    EXPECT_EQ(shown.view.selection(), (TextRange{40, 4}));
}

// Flash

TEST(CodingTextView, FlashesARevealedPassageInItsColourForAMoment)
{
    ShownCodingText shown(sentence);
    shown.content.highlights = {
        passage(4, 5, u"#00FF00"_s), passage(4, 5, u"#0000FF"_s), passage(20, 4, u"nonsense"_s)};
    shown.apply();
    const QImage calm = shown.picture();
    const QColor base = shown.view.palette().color(QPalette::Base);
    for (const qint64 position : {3, 4, 8, 9}) {
        const bool isCoded = position >= 4 && position < 9;
        EXPECT_TRUE(isNear(behind(shown, position), isCoded ? over(base, Qt::blue, 0.16) : base)) << position;
    }
    shown.reveal({4, 5});
    ASSERT_EQ(shown.later.size(), 1U);
    EXPECT_TRUE(isNear(behind(shown, 5), over(base, Qt::green, 0.45))) << "the first with that range gives the colour";
    shown.apply();
    EXPECT_EQ(shown.later.size(), 1U) << "the same token again";

    shown.reveal({20, 4});
    EXPECT_TRUE(isNear(behind(shown, 21), over(base, QColor(0xFF, 0xCC, 0), 0.45)));
    ASSERT_EQ(shown.later.size(), 2U);
    const QImage flashed = shown.picture();
    shown.later[0].second();
    EXPECT_EQ(shown.picture(), flashed) << "only the last of two reveals ends the flash";
    shown.later[1].second();
    EXPECT_EQ(shown.picture(), calm);
}

TEST(CodingTextView, EndsAFlashWhenPassagesOrTextChange)
{
    ShownCodingText shown(sentence);
    const auto expectCalm = [&] {
        EXPECT_EQ(shown.later.size(), 1U);
        EXPECT_TRUE(isNear(behind(shown, 5), shown.view.palette().color(QPalette::Base)));
        shown.later.clear();
    };
    ++shown.content.revealToken;
    shown.apply();
    shown.content.revealRange = TextRange{4, 5}; // the token wasn't used up without a range
    shown.apply();
    shown.content.highlights = {passage(30, 4)};
    shown.apply();
    expectCalm();
    shown.reveal({4, 5});
    shown.content.text = sentence + u"!"_s;
    shown.apply();
    expectCalm();
}

// Context menu

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

// Find

TEST(CodingTextView, OutlinesFindMatchesAndSelectsTheCurrentOne)
{
    ShownCodingText shown(paragraphs(100));
    const QImage bare = shown.picture();
    std::vector<TextRange> matches;
    for (qint64 at = shown.content.text.indexOf(u"fox"_s); at >= 0; at = shown.content.text.indexOf(u"fox"_s, at + 1))
        matches.push_back({at, 3});
    shown.view.setFindMatches(matches);
    EXPECT_NE(shown.picture(), bare);
    for (const size_t index : {size_t(150), matches.size()}) { // there is no such match
        shown.view.selectFindMatch(index);
        EXPECT_EQ(shown.view.currentFindMatch(), 150U);
        EXPECT_EQ(shown.view.selection(), matches[150]);
    }
    EXPECT_TRUE(shown.view.viewport()->rect().contains(shown.view.characterRectangle(matches[150].location)));
    shown.view.setFindMatches({});
    shown.view.select({});
    shown.scrollTo(0);
    EXPECT_EQ(shown.picture(), bare);
}
