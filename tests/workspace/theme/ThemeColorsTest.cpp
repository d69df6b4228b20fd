#include "workspace/theme/ThemeColors.h"
#include "workspace/theme/Appearance.h"
#include "workspace/theme/Theme.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Token = QColor ThemeColors::*;

constexpr double readable = 4.5;
constexpr double discernible = 3;
constexpr Token none = nullptr;

struct ContrastCase {
    const char *name;
    Token foreground;
    Token surface;
    Token tint; ///< over the surface
    double least;
};

class Legibility : public testing::TestWithParam<ContrastCase> { };

struct MixCase {
    const char *name;
    bool isDark;
    Token tint;
    Token surface;
    const char *opaque;
};

class Tints : public testing::TestWithParam<MixCase> { };

QColor ground(const ThemeColors &colors, const ContrastCase &pair)
{
    const QColor surface = colors.*pair.surface;
    return pair.tint == none ? surface : mixed(surface, colors.*pair.tint);
}

} // namespace

TEST_P(Legibility, HoldsInEveryLook)
{
    for (const Look look : {Look{false, false}, Look{true, false}, Look{false, true}, Look{true, true}}) {
        const ThemeColors colors = ThemeColors::of(look);
        EXPECT_GE(contrast(colors.*GetParam().foreground, ground(colors, GetParam())), GetParam().least)
            << "dark " << look.isDark << ", high contrast " << look.hasHighContrast;
    }
}

using C = ThemeColors;
INSTANTIATE_TEST_SUITE_P(Palette, Legibility,
    testing::Values(ContrastCase{"text_on_sidebar", &C::text, &C::sidebar, none, 7},
        ContrastCase{"text_on_page", &C::text, &C::page, none, 7},
        ContrastCase{"secondary_on_raised", &C::secondary, &C::raised, none, readable},
        ContrastCase{"secondary_on_selected_row_of_sidebar", &C::secondary, &C::sidebar, &C::selection, readable},
        ContrastCase{"secondary_on_selected_menu_entry", &C::secondary, &C::raised, &C::selection, readable},
        ContrastCase{"secondary_on_track_of_sheet", &C::secondary, &C::sheet, &C::track, readable},
        ContrastCase{"tertiary_on_sidebar", &C::tertiary, &C::sidebar, none, readable},
        ContrastCase{"tertiary_on_raised", &C::tertiary, &C::raised, none, readable},
        ContrastCase{"accent_text_on_hovered_row", &C::accentText, &C::content, &C::hover, readable},
        ContrastCase{"destructive_text_on_raised", &C::destructiveText, &C::raised, none, readable},
        ContrastCase{"white_on_pressed_accent", &C::onAccent, &C::accentPressed, none, readable},
        ContrastCase{"white_on_destructive_fill", &C::onAccent, &C::destructiveFill, none, readable},
        ContrastCase{"focus_ring_on_sidebar", &C::accentForeground, &C::sidebar, none, discernible}),
    [](const auto &row) { return std::string(row.param.name); });

TEST_P(Tints, ComeOutAsDesigned)
{
    const ThemeColors colors = ThemeColors::of({GetParam().isDark, false});
    EXPECT_EQ(mixed(colors.*GetParam().surface, colors.*GetParam().tint).name().toStdString(), GetParam().opaque);
}

INSTANTIATE_TEST_SUITE_P(Palette, Tints,
    testing::Values(MixCase{"light_selection_on_sidebar", false, &C::selection, &C::sidebar, "#dcdcf1"},
        MixCase{"light_quiet_selection_on_content", false, &C::quietSelection, &C::content, "#ebebee"},
        MixCase{"light_text_selection_on_page", false, &C::textSelection, &C::page, "#dadaf6"},
        MixCase{"dark_selection_on_content", true, &C::selection, &C::content, "#333259"},
        MixCase{"dark_hover_on_sidebar", true, &C::hover, &C::sidebar, "#2d2d31"},
        MixCase{"dark_text_selection_on_page", true, &C::textSelection, &C::page, "#3c3b73"}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(ThemeColors, EdgesCanBeSeenInHighContrast)
{
    for (const bool isDark : {false, true}) {
        const ThemeColors colors = ThemeColors::of({isDark, true});
        EXPECT_GE(contrast(colors.hairline, colors.sidebar), discernible);
        EXPECT_GE(contrast(colors.controlEdge, colors.sheet), discernible);
        EXPECT_EQ(colors.raisedEdge.alpha(), 255);
        EXPECT_EQ(colors.secondary, colors.text);
    }
}

TEST(ThemeColors, SelectedTextKeepsItsColour)
{
    const QPalette palette = ThemeColors::of({true, false}).palette();
    EXPECT_EQ(palette.color(QPalette::HighlightedText), palette.color(QPalette::Text));
    EXPECT_NE(palette.color(QPalette::Disabled, QPalette::Text), palette.color(QPalette::Active, QPalette::Text));
}

TEST(Theme, HasTheAccentOfTheWindow)
{
    EXPECT_EQ(Theme::accent.name(), u"#6663db"_s);
    EXPECT_NEAR(Theme::accent.redF(), .40, 1e-4);
    EXPECT_NEAR(Theme::accent.greenF(), .39, 1e-4);
    EXPECT_NEAR(Theme::accent.blueF(), .86, 1e-4);
    EXPECT_EQ(Theme::accent.alpha(), 255);
}
