#include "ShownCodingText.h"
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

const qint64 last = text.indexOf(u"Last"_s);

} // namespace

TEST(AccessibleCodingText, ReadsTheUnitsAroundAnOffset)
{
    const Surface surface;
    struct UnitCase {
        QAccessible::TextBoundaryType type;
        qint64 offset;
        QString before;
        QString at;
        QString after;
    };
    const QString line = u"Filling line of text.\n"_s;
    const std::vector<UnitCase> cases{{QAccessible::CharBoundary, 0, {}, u"F"_s, u"i"_s},
        {QAccessible::CharBoundary, last + 5, u" "_s, u"e\u0301"_s, u" "_s},
        {QAccessible::CharBoundary, 34, u"."_s, u"\r\n"_s, u"F"_s},
        {QAccessible::CharBoundary, text.size(), u"."_s, {}, {}},
        {QAccessible::WordBoundary, 7, u" "_s, u"words"_s, u" "_s},
        {QAccessible::SentenceBoundary, 3, {}, u"First words here. "_s, u"Second sentence.\r\n"_s},
        {QAccessible::LineBoundary, 3, {}, text.left(36), line},
        {QAccessible::LineBoundary, last + 2, line, text.mid(last), {}}, // never laid out before
        {QAccessible::ParagraphBoundary, 3, {}, text.left(36), line}, {QAccessible::NoBoundary, 3, {}, text, {}}};
    for (const auto &[type, offset, before, at, after] : cases) {
        SCOPED_TRACE(testing::Message() << "type " << type << " at " << offset);
        int start = -1;
        int end = -1;
        EXPECT_EQ(surface.texts.textAtOffset(int(offset), type, &start, &end), at);
        EXPECT_EQ(surface.texts.text(start, end), at);
        EXPECT_EQ(surface.texts.textBeforeOffset(int(offset), type, &start, &end), before);
        EXPECT_EQ(surface.texts.text(start, end), before);
        EXPECT_EQ(surface.texts.textAfterOffset(int(offset), type, &start, &end), after);
        EXPECT_EQ(surface.texts.text(start, end), after);
    }
}

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
