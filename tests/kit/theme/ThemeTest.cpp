#include "ThemedTest.h"

#include "kit/theme/FocusRing.h"
#include "kit/theme/Theme.h"

#include <QFocusFrame>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

using Token = QColor ThemeColors::*;
using C = ThemeColors;

constexpr double readable = 4.5;
constexpr double discernible = 3;
constexpr Token none = nullptr;

const QPalette light(Qt::black, QColor(0xEF, 0xEF, 0xEF));
const QPalette dark(Qt::white, QColor(0x30, 0x30, 0x30));
const QPalette blackOnWhite(Qt::black, Qt::white);

} // namespace

TEST(ThemeColors, AreLegibleInEveryLook)
{
    EXPECT_NEAR(contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.478, .001);
    // The minimum contrast of a colour on a surface, which may have a tint over it.
    const std::tuple<const char *, Token, Token, Token, double> pairs[]{
        {"text_on_sidebar", &C::text, &C::sidebar, none, 7},
        {"secondary_on_selected_row_of_sidebar", &C::secondary, &C::sidebar, &C::selection, readable},
        {"secondary_on_track_of_sheet", &C::secondary, &C::sheet, &C::track, readable},
        {"tertiary_on_sidebar", &C::tertiary, &C::sidebar, none, readable},
        {"accent_text_on_hovered_row", &C::accentText, &C::content, &C::hover, readable},
        {"destructive_text_on_raised", &C::destructiveText, &C::raised, none, readable},
        {"white_on_pressed_accent", &C::onAccent, &C::accentPressed, none, readable},
        {"white_on_destructive_fill", &C::onAccent, &C::destructiveFill, none, readable},
        {"focus_ring_on_sidebar", &C::accentForeground, &C::sidebar, none, discernible}};
    for (const Look look : {Look{false, false}, Look{true, false}, Look{false, true}, Look{true, true}}) {
        const ThemeColors colors = ThemeColors::of(look);
        for (const auto &[name, foreground, surface, tint, min] : pairs) {
            const QColor ground = tint == none ? colors.*surface : mixed(colors.*surface, colors.*tint);
            EXPECT_GE(contrast(colors.*foreground, ground), min)
                << name << ", dark " << look.isDark << ", high contrast " << look.hasHighContrast;
        }
    }
}

TEST(Appearance, UnderstandsTheDesktop)
{
    const std::tuple<const char *, QVariant, QVariant, QPalette, Look> desktops[]{
        {"dark_wish_beats_light_palette", 1U, {}, light, {true, false}},
        {"light_wish_beats_dark_palette", 2U, {}, dark, {false, false}},
        {"no_preference_falls_back_to_the_palette", 0U, {}, dark, {true, false}},
        {"text_instead_of_a_number", u"dark"_s, u"high"_s, light, {false, false}},
        {"wished_contrast", 1U, 1U, light, {true, true}},
        {"default_palette_is_no_high_contrast", {}, 0U, light, {false, false}},
        {"black_on_white_palette_is_high_contrast", {}, 0U, blackOnWhite, {false, true}}};
    for (const auto &[name, scheme, wishedContrast, palette, expected] : desktops) {
        FakeDesktopSettings settings;
        settings.set(u"org.freedesktop.appearance/color-scheme"_s, scheme);
        settings.set(u"org.freedesktop.appearance/contrast"_s, wishedContrast);
        EXPECT_EQ(Appearance(settings, palette).look(), expected) << name;
    }
}

TEST_F(ThemedTest, OnlyADesktopSettingThatMakesADifferenceIsAnnounced)
{
    const QSignalSpy changes(&m_appearance, &Appearance::changed);
    m_settings.set(u"org.freedesktop.appearance/color-scheme"_s, 0U);
    EXPECT_EQ(changes.count(), 0);
    const auto animates = [this] {
        return m_window.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &m_window) > 0;
    };
    EXPECT_FALSE(animates());
    animate(true);
    EXPECT_TRUE(animates());
    m_settings.set(u"org.freedesktop.appearance/reduced-motion"_s, 1U);
    EXPECT_FALSE(animates());
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(ThemedTest, TheRingComesWithTheKeyboardAndAFieldShowsItsFocusHoweverItCame)
{
    QPushButton first(&m_window);
    QPushButton second(&m_window);
    QLineEdit field(&m_window);
    QLineEdit inRow(&m_window);
    inRow.setFrame(false); // an editor within a row
    QListWidget list(&m_window); // shows its focus by its rows
    showWindow();
    second.setFocus(Qt::OtherFocusReason); // so that the first one has to take it
    const std::tuple<QWidget *, Qt::FocusReason, QWidget *> moves[]{{&first, Qt::MouseFocusReason, nullptr},
        {&second, Qt::TabFocusReason, &second}, {&first, Qt::OtherFocusReason, nullptr},
        {&second, Qt::BacktabFocusReason, &second}, {&field, Qt::MouseFocusReason, &field},
        {&inRow, Qt::TabFocusReason, nullptr}, {&list, Qt::TabFocusReason, nullptr}};
    for (const auto &[widget, reason, ringed] : moves) {
        widget->setFocus(reason);
        const auto *frame = m_window.findChild<QFocusFrame *>();
        EXPECT_EQ(frame != nullptr ? frame->widget() : nullptr, ringed) << widget->metaObject()->className();
        EXPECT_EQ(FocusRing::isDueTo(*widget), reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason);
    }
}
