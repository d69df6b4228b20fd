#include "ShownCodingText.h"
#include "support/Cases.h"
#include "support/Printing.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QCursor>
#include <QMenu>
#include <QMimeData>
#include <QRandomGenerator>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

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
    testing::Values(OffsetCase{"line_feed", u"\n"_s}, OffsetCase{"pair_of_return_and_line_feed", u"\r\n"_s},
        OffsetCase{"lone_return", u"\r"_s}, OffsetCase{"null", u" "_s + QChar(0) + u" "_s},
        OffsetCase{"line_separator", u"\u2028"_s}, OffsetCase{"paragraph_separator", u"\u2029"_s},
        OffsetCase{"object_replacement", u"\uFFFC "_s}, OffsetCase{"noncharacters", u"\uFDD0 \uFDD1 "_s},
        OffsetCase{"high_half", QChar(0xD83D) + u" "_s}, OffsetCase{"low_half", QChar(0xDE00) + u" "_s},
        OffsetCase{"emoji", u" \U0001F469\u200D\U0001F469\u200D\U0001F467 "_s},
        OffsetCase{"ideographs", u"\u4E2D\u6587\uFF0C "_s},
        OffsetCase{"arabic_line", u"\n\u0639\u0644\u064A\u0643\u0645\n"_s}, OffsetCase{"feeds", u"\v\f "_s},
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

TEST(CodingTextView, FindsEveryCharacterWhereItIsSeen)
{
    const QString text = u"Latin office, \u4E2D\u6587\u5B57\u7B26 and e\u0301 \U0001F600 end. "_s.repeated(8) + u"\n"_s
        + u"Mixed \u0639\u0644\u064A\u0643\u0645 and \u05E9\u05DC\u05D5\u05DD with 123 here. "_s.repeated(6);
    ShownCodingText shown(text);
    const QTextDocument &document = *shown.view.document();
    int seen = 0;
    for (int position = 0; position < text.size(); ++position) {
        const QTextBlock block = document.findBlock(position);
        const QRect rectangle = shown.view.characterRectangle(position);
        if (rectangle.width() < 3 || !block.layout()->isValidCursorPosition(position - block.position()))
            continue;
        ++seen;
        ASSERT_EQ(shown.view.characterAt(rectangle.center()), position) << text.mid(position, 1).toStdString();
    }
    EXPECT_GT(seen, text.size() * 3 / 4);
}

// Selection

TEST(CodingTextView, SelectsByMouseAndKeysAndReportsEachChange)
{
    ShownCodingText shown(sentence + u"\nSecond line.\nThird."_s);
    shown.click(4);
    EXPECT_THAT(shown.reported, ElementsAre(TextRange{4, 0}));
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
}

TEST(CodingTextView, SelectsByDraggingBothWays)
{
    ShownCodingText shown(sentence);
    QWidget *page = shown.view.viewport();
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
    class Parent : public QWidget {
    public:
        int escapes = 0;

    protected:
        void keyPressEvent(QKeyEvent *event) override { escapes += event->key() == Qt::Key_Escape ? 1 : 0; }
    } parent;
    CodingTextView view(&parent);
    view.apply({sentence, {}, 0, {}, 0});
    view.select({4, 5});
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_EQ(view.selection(), (TextRange{4, 0}));
    EXPECT_EQ(parent.escapes, 0);
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_EQ(parent.escapes, 1);
}

TEST(CodingTextView, CopiesTheTextAsItWasGiven)
{
    const QString text = u"a\r\nb\u2028c\u2029d\u00A0e\tf\uFFFCg\uFDD0h"_s;
    ShownCodingText shown(text);
    shown.press(Qt::Key_A, Qt::ControlModifier);
    shown.press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), text);
    shown.press(Qt::Key_X, Qt::ControlModifier);
    shown.press(Qt::Key_V, Qt::ControlModifier);
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
    shown.apply();
    EXPECT_EQ(shown.view.selection(), TextRange()) << "a new token clears the selection, and doesn't scroll";
    EXPECT_EQ(shown.scrolled(), 900);
    shown.view.select({50, 10});
    shown.apply();
    EXPECT_EQ(shown.view.selection(), (TextRange{50, 10})) << "the same token again";

    shown.reported.clear();
    shown.content.text = paragraphs(201);
    shown.content.revealRange = TextRange{9000, 10};
    shown.content.revealToken = 7;
    shown.content.resetToken = 2;
    shown.apply();
    EXPECT_EQ(shown.scrolled(), 0);
    EXPECT_EQ(shown.view.selection(), TextRange());
    EXPECT_THAT(shown.reported, ElementsAre(TextRange{0, 0}));
    EXPECT_TRUE(shown.later.empty()) << "a reveal that comes with a text waits";
    shown.apply();
    EXPECT_GT(shown.scrolled(), 0);
    EXPECT_EQ(shown.later.size(), 1U);
}

TEST(CodingTextView, ChangesPassagesWithoutMovingAnything)
{
    QRandomGenerator random(4);
    ShownCodingText shown(paragraphs(400));
    shown.scrollTo(12'345);
    shown.view.select({3000, 40});
    shown.reported.clear();
    const int before = shown.scrolled();
    const QImage bare = shown.picture();
    for (int step = 0; step < 50; ++step) {
        const int location = random.bounded(int(shown.content.text.size()));
        shown.content.highlights.append(passage(location, random.bounded(1, 900)));
        shown.apply();
        ASSERT_EQ(shown.scrolled(), before);
        ASSERT_EQ(shown.view.selection(), (TextRange{3000, 40}));
    }
    EXPECT_NE(shown.picture(), bare);
    shown.content.highlights.clear();
    shown.apply();
    EXPECT_EQ(shown.picture(), bare);
    EXPECT_TRUE(shown.reported.empty());
}

TEST(CodingTextView, MeltsIntoTheSamePictureWhicheverWayPassagesCame)
{
    QRandomGenerator random(17);
    const QString text = paragraphs(3) + u"\u0639\u0644\u064A\u0643\u0645 mixed \u05E9\u05DC\u05D5\u05DD.\r\n"_s;
    ShownCodingText changed(text);
    for (int round = 0; round < 25; ++round) {
        auto &highlights = changed.content.highlights;
        if (!highlights.isEmpty() && random.bounded(3) == 0)
            highlights.removeAt(random.bounded(int(highlights.size())));
        else
            highlights.append(passage(random.bounded(int(text.size())), random.bounded(1, 90),
                random.bounded(2) ? u"#34C759"_s : u"#5E5CE6"_s));
        changed.apply();
        QApplication::processEvents(); // paints what was asked for, and only that
        const QImage after = changed.view.grab().toImage();
        changed.view.viewport()->repaint();
        ASSERT_EQ(after, changed.view.grab().toImage()) << round;
    }
}

TEST(CodingTextView, SurvivesAnyRange)
{
    ShownCodingText shown(sentence);
    const QImage bare = shown.picture();
    for (const qint64 location : {least, qint64(-1), qint64(44), huge}) {
        for (const qint64 length : {least, qint64(-1), qint64(0), qint64(1), huge}) {
            shown.content.highlights.append(passage(location, length));
            shown.reveal({location, length});
            shown.view.setFindMatches({{location, length}});
            shown.view.select({location, length});
            shown.view.select({});
        }
    }
    for (const TextRange range : {TextRange{0, 45}, TextRange{44, 1}, TextRange{3, huge}, TextRange{0, 0}})
        shown.reveal(range);
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
    EXPECT_TRUE(isNear(behind(shown, 5), over(base, Qt::blue, 0.16))) << "the later passage shows";
    shown.reveal({4, 5});
    ASSERT_EQ(shown.later.size(), 1U);
    EXPECT_TRUE(isNear(behind(shown, 5), over(base, Qt::green, 0.45))) << "the first with that range gives the colour";
    EXPECT_EQ(shown.view.selection(), TextRange());
    shown.apply();
    EXPECT_EQ(shown.later.size(), 1U) << "the same token again";

    shown.reveal({20, 4});
    EXPECT_TRUE(isNear(behind(shown, 21), over(base, QColor(0xFF, 0xCC, 0), 0.45)));
    ASSERT_EQ(shown.later.size(), 2U);
    const QImage flashed = shown.picture();
    shown.later[0].second();
    EXPECT_EQ(shown.picture(), flashed) << "only the last of two reveals ends the flash";
    shown.reveal({0, 1'000});
    EXPECT_EQ(shown.picture(), flashed) << "a range outside of the text is dropped";
    shown.later[1].second();
    EXPECT_EQ(shown.picture(), calm);
}

TEST(CodingTextView, EndsAFlashWhenPassagesOrTextChange)
{
    ShownCodingText shown(sentence);
    ++shown.content.revealToken;
    shown.apply();
    shown.content.revealRange = TextRange{4, 5};
    shown.apply();
    EXPECT_EQ(shown.later.size(), 1U) << "the token wasn't used up without a range";
    shown.content.highlights = {passage(30, 4)};
    shown.apply();
    EXPECT_TRUE(isNear(behind(shown, 5), shown.view.palette().color(QPalette::Base)));
    shown.reveal({4, 5});
    shown.content.text = sentence + u"!"_s;
    shown.apply();
    EXPECT_TRUE(isNear(behind(shown, 5), shown.view.palette().color(QPalette::Base)));
    shown.later.back().second();
}

TEST(CodingTextView, MayBeAppliedAgainByWhoHearsOfTheSelection)
{
    ShownCodingText shown(paragraphs(20));
    QObject::connect(&shown.view, &CodingTextView::selectedRangeChanged, &shown.view, [&shown] {
        shown.content.highlights.append(passage(10, 10));
        shown.apply();
    });
    shown.view.select({30, 5});
    shown.content.text = sentence;
    shown.apply();
    EXPECT_EQ(shown.content.highlights.size(), 2);
    EXPECT_EQ(shown.view.text(), sentence);
}

// Context menu

TEST(CodingTextView, OffersWhatCanBeDoneAtACharacter)
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
    QObject::connect(&shown.view, &CodingTextView::addCodeRequested, &shown.view, [] {});
    for (const qint64 position : {0, 3, 16})
        EXPECT_EQ(own(position), QStringList()) << position;
    for (const qint64 position : {4, 9})
        EXPECT_EQ(own(position), (QStringList{u"Remove Code — R&&D"_s, u"-"_s})) << position;
    for (const qint64 position : {10, 15})
        EXPECT_EQ(own(position), (QStringList{u"Add Code…"_s, u"Remove Code — Newer"_s, u"-"_s})) << position;
}

TEST(CodingTextView, OpensTheMenuUnderThePointerAndRunsItsEntries)
{
    ShownCodingText shown(sentence);
    int added = 0;
    std::vector<QUuid> removed;
    QObject::connect(&shown.view, &CodingTextView::addCodeRequested, &shown.view, [&added] { ++added; });
    QObject::connect(&shown.view, &CodingTextView::removeCodingRequested, &shown.view,
        [&removed](const QUuid &codingID) { removed.push_back(codingID); });
    shown.content.highlights = {passage(10, 5)};
    shown.apply();
    shown.view.select({4, 11});
    QWidget *page = shown.view.viewport();
    const QPoint point = shown.pointAt(12);
    QContextMenuEvent event(QContextMenuEvent::Mouse, point, page->mapToGlobal(point));
    QApplication::sendEvent(page, &event);
    auto *menu = shown.view.findChild<QMenu *>(u"textContextMenu"_s);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(
        titles(*menu), (QStringList{u"Add Code…"_s, u"Remove Code — Trust"_s, u"-"_s, u"Copy"_s, u"Select All"_s}));
    menu->actions()[0]->trigger();
    menu->actions()[1]->trigger();
    menu->actions()[3]->trigger();
    EXPECT_EQ(added, 1);
    EXPECT_THAT(removed, ElementsAre(shown.content.highlights[0].codingID));
    EXPECT_EQ(QApplication::clipboard()->text(), u"quick brown"_s);
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
    EXPECT_FALSE(shown.view.currentFindMatch());
    shown.view.selectFindMatch(150);
    EXPECT_EQ(shown.view.selection(), matches[150]);
    EXPECT_EQ(shown.view.currentFindMatch(), 150U);
    EXPECT_TRUE(shown.view.viewport()->rect().contains(shown.view.characterRectangle(matches[150].location)));
    shown.view.selectFindMatch(matches.size());
    EXPECT_EQ(shown.view.currentFindMatch(), 150U) << "there is no such match";
    shown.view.setFindMatches({});
    shown.view.select({});
    shown.scrollTo(0);
    EXPECT_EQ(shown.picture(), bare);
}
