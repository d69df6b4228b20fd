#include "ThemedTest.h"

#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace {

struct AppearanceCase {
    const char *name;
    QVariant scheme;
    QVariant contrast;
    QColor window;
    QColor text;
    Look expected;
};

using AppearanceOfDesktop = testing::TestWithParam<AppearanceCase>;

const QString scheme = u"org.freedesktop.appearance/color-scheme"_s;
const QString contrastKey = u"org.freedesktop.appearance/contrast"_s;
const QColor pale(0xEF, 0xEF, 0xEF);
const QColor deep(0x30, 0x30, 0x30);

} // namespace

TEST_P(AppearanceOfDesktop, IsUnderstood)
{
    FakeDesktopSettings settings;
    settings.set(scheme, GetParam().scheme);
    settings.set(contrastKey, GetParam().contrast);
    QPalette palette;
    palette.setColor(QPalette::Window, GetParam().window);
    palette.setColor(QPalette::WindowText, GetParam().text);
    EXPECT_EQ(Appearance(settings, palette).look(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Desktops, AppearanceOfDesktop,
    testing::Values(AppearanceCase{"dark_wish_beats_light_palette", 1U, {}, pale, Qt::black, {true, false}},
        AppearanceCase{"light_wish_beats_dark_palette", 2U, {}, deep, Qt::white, {false, false}},
        AppearanceCase{"no_preference_falls_to_the_palette", 0U, {}, deep, Qt::white, {true, false}},
        AppearanceCase{"text_instead_of_a_number", u"dark"_s, u"high"_s, pale, Qt::black, {false, false}},
        AppearanceCase{"wished_contrast", 1U, 1U, pale, Qt::black, {true, true}},
        AppearanceCase{"stock_palette_is_no_high_contrast", {}, 0U, pale, Qt::black, {false, false}},
        AppearanceCase{"black_on_white_palette_is_high_contrast", {}, 0U, Qt::white, Qt::black, {false, true}}),
    rowName);

TEST(Appearance, AnnouncesOnlyWhatMakesADifference)
{
    FakeDesktopSettings settings;
    Appearance appearance(settings, QPalette(Qt::black, pale));
    const QSignalSpy changes(&appearance, &Appearance::changed);
    settings.set(scheme, 0U);
    settings.set(u"org.gnome.desktop.interface/font-name"_s, u"Other"_s);
    EXPECT_EQ(changes.count(), 0);
    settings.set(scheme, 1U);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(appearance.look().isDark);
    settings.set(u"org.gnome.desktop.interface/enable-animations"_s, false);
    EXPECT_EQ(changes.count(), 2);
    EXPECT_TRUE(appearance.reducesMotion());
}

TEST_F(ThemedTest, AChangeOfTheDesktopReachesWhatIsShown)
{
    QLineEdit child(&m_window);
    showWindow();
    const QIcon icon = Symbols::icon(u"doc.text"_s, Symbols::Tint::secondary, 1.9);
    const QImage light = child.grab().toImage();
    const QImage lightIcon = icon.pixmap({48, 48}, 1).toImage();
    m_settings.set(scheme, 1U);
    EXPECT_TRUE(Theme::colors().look.isDark);
    EXPECT_TRUE(
        QTest::qWaitFor([&child] { return child.palette().color(QPalette::Window) == Theme::colors().window; }));
    EXPECT_NE(child.grab().toImage(), light);
    EXPECT_NE(icon.pixmap({48, 48}, 1).toImage(), lightIcon);
    const auto duration = [this] {
        return m_window.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &m_window);
    };
    EXPECT_EQ(duration(), 0);
    animate(true);
    EXPECT_GT(duration(), 0);
}
