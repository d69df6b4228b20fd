#include "ShownCodingText.h"
#include "support/Cases.h"
#include "support/Printing.h"

#include <QAccessible>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString text = u"First words here. Second sentence.\r\n"_s + u"Filling line of text.\n"_s.repeated(2000)
    + u"Last e\u0301 one, \u05E9\u05DC\u05D5\u05DD \u0639\u0644\u064A\u0643\u0645."_s;

struct Surface : ShownCodingText {
    Surface()
        : ShownCodingText(text),
          interface(*QAccessible::queryAccessibleInterface(&view)),
          texts(*interface.textInterface())
    {
    }
    QAccessibleInterface &interface;
    QAccessibleTextInterface &texts;
};

struct UnitCase {
    const char *name;
    QAccessible::TextBoundaryType type;
    qint64 offset;
    QString before;
    QString at;
    QString after;
};
using AccessibleUnit = testing::TestWithParam<UnitCase>;

const qint64 last = text.indexOf(u"Last"_s);

} // namespace

TEST_P(AccessibleUnit, IsReadAroundAnOffset)
{
    const Surface surface;
    const auto &[name, type, offset, before, at, after] = GetParam();
    int start = -1;
    int end = -1;
    EXPECT_EQ(surface.texts.textAtOffset(int(offset), type, &start, &end), at);
    EXPECT_EQ(surface.texts.text(start, end), at);
    EXPECT_EQ(surface.texts.textBeforeOffset(int(offset), type, &start, &end), before);
    EXPECT_EQ(surface.texts.text(start, end), before);
    EXPECT_EQ(surface.texts.textAfterOffset(int(offset), type, &start, &end), after);
    EXPECT_EQ(surface.texts.text(start, end), after);
}

INSTANTIATE_TEST_SUITE_P(Reader, AccessibleUnit,
    testing::Values(UnitCase{"character", QAccessible::CharBoundary, 1, u"F"_s, u"i"_s, u"r"_s},
        UnitCase{"character_at_the_start", QAccessible::CharBoundary, 0, {}, u"F"_s, u"i"_s},
        UnitCase{"character_with_its_mark", QAccessible::CharBoundary, last + 5, u" "_s, u"e\u0301"_s, u" "_s},
        UnitCase{"line_break_is_one_character", QAccessible::CharBoundary, 34, u"."_s, u"\r\n"_s, u"F"_s},
        UnitCase{"word", QAccessible::WordBoundary, 7, u" "_s, u"words"_s, u" "_s},
        UnitCase{"sentence", QAccessible::SentenceBoundary, 3, {}, u"First words here. "_s, u"Second sentence.\r\n"_s},
        UnitCase{"line", QAccessible::LineBoundary, 3, {}, text.left(36), u"Filling line of text.\n"_s},
        UnitCase{"line_never_laid_out", QAccessible::LineBoundary, last + 2, u"Filling line of text.\n"_s,
            text.mid(last), {}},
        UnitCase{"paragraph", QAccessible::ParagraphBoundary, 3, {}, text.left(36), u"Filling line of text.\n"_s},
        UnitCase{"the_end", QAccessible::CharBoundary, text.size(), u"."_s, {}, {}}),
    rowName);

TEST(AccessibleCodingText, NamesItselfAndSelectsButCantBeEdited)
{
    Surface surface;
    EXPECT_EQ(surface.interface.text(QAccessible::Name), u"Document text"_s);
    EXPECT_EQ(surface.interface.text(QAccessible::Value), text);
    EXPECT_TRUE(surface.interface.state().readOnly);
    EXPECT_EQ(surface.texts.characterCount(), text.size());
    EXPECT_EQ(surface.texts.text(-1, 5), text.mid(5)) << "-1 is the end";

    int start = -1;
    int end = -1;
    EXPECT_EQ(surface.texts.selectionCount(), 0);
    surface.texts.setSelection(0, 11, 6);
    surface.texts.selection(0, &start, &end);
    EXPECT_EQ(text.mid(start, end - start), u"words"_s);
    EXPECT_EQ(surface.texts.selectionCount(), 1);
    EXPECT_EQ(surface.view.selection(), (TextRange{6, 5}));
    surface.texts.removeSelection(0);
    EXPECT_EQ(surface.texts.selectionCount(), 0);
    surface.texts.setCursorPosition(int(last));
    EXPECT_EQ(surface.texts.cursorPosition(), last);
    EXPECT_GT(surface.scrolled(), 10'000);
}

TEST(AccessibleCodingText, TellsWhereEveryCharacterIs)
{
    Surface surface;
    surface.texts.scrollToSubstring(int(last), int(text.size()));
    const QRect page(surface.view.viewport()->mapToGlobal(QPoint()), surface.view.viewport()->size());
    for (qint64 offset = last; offset < text.size(); ++offset) {
        const QRect rectangle = surface.texts.characterRect(int(offset));
        ASSERT_TRUE(page.contains(rectangle)) << offset;
        if (rectangle.width() > 3 && !text[offset].isMark()) {
            ASSERT_EQ(surface.texts.offsetAtPoint(rectangle.center()), offset);
        }
    }
    EXPECT_LT(surface.texts.characterRect(0).bottom(), page.top()) << "what is above the page is above it";
    EXPECT_EQ(surface.texts.offsetAtPoint(page.topLeft() - QPoint(5, 5)), -1);
    EXPECT_TRUE(surface.texts.characterRect(int(text.size()) + 1).isNull());
}
