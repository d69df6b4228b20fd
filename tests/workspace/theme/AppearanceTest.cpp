#include "ThemedTest.h"

#include "workspace/theme/ThemeColors.h"

#include <QSignalSpy>
#include <QStyle>
#include <QTest>

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

/// Counts how often it is painted.
class Painted final : public QWidget {
public:
    using QWidget::QWidget;
    int paints = 0;

protected:
    void paintEvent(QPaintEvent *) override { ++paints; }
};

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
        AppearanceCase{"silence_falls_to_the_palette", {}, {}, pale, Qt::black, {false, false}},
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

TEST(Appearance, ReckonsContrastAsTheGuidelinesDo)
{
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 1e-6);
    EXPECT_NEAR(contrast(Qt::white, Qt::white), 1, 1e-6);
    EXPECT_NEAR(contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, .01);
}

TEST_F(ThemedTest, AChangeOfTheDesktopRepaintsWhatIsShown)
{
    Painted child(&m_window);
    child.resize(100, 100);
    showWindow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return child.paints > 0; }));
    const int before = child.paints;
    m_settings.set(scheme, 1U);
    EXPECT_TRUE(Theme::colors().look.isDark);
    EXPECT_TRUE(QTest::qWaitFor([&] { return child.paints > before; }));
    EXPECT_EQ(child.palette().color(QPalette::Window), Theme::colors().window);
}

TEST_F(ThemedTest, TheWishForCalmReachesTheStyle)
{
    EXPECT_EQ(m_window.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &m_window), 0);
    animate(true);
    EXPECT_GT(m_window.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &m_window), 0);
}
