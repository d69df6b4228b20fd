#include "kit/theme/Appearance.h"
#include "kit/theme/Theme.h"
#include "support/Cases.h"

#include <gtest/gtest.h>

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

using Legibility = testing::TestWithParam<ContrastCase>;

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
        ContrastCase{"secondary_on_selected_row_of_sidebar", &C::secondary, &C::sidebar, &C::selection, readable},
        ContrastCase{"secondary_on_track_of_sheet", &C::secondary, &C::sheet, &C::track, readable},
        ContrastCase{"tertiary_on_sidebar", &C::tertiary, &C::sidebar, none, readable},
        ContrastCase{"accent_text_on_hovered_row", &C::accentText, &C::content, &C::hover, readable},
        ContrastCase{"destructive_text_on_raised", &C::destructiveText, &C::raised, none, readable},
        ContrastCase{"white_on_pressed_accent", &C::onAccent, &C::accentPressed, none, readable},
        ContrastCase{"white_on_destructive_fill", &C::onAccent, &C::destructiveFill, none, readable},
        ContrastCase{"focus_ring_on_sidebar", &C::accentForeground, &C::sidebar, none, discernible}),
    rowName);
