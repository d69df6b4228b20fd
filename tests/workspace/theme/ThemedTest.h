#pragma once

#include "support/Cases.h"
#include "workspace/theme/Appearance.h"
#include "workspace/theme/DesktopSettings.h"
#include "workspace/theme/Theme.h"

#include <QApplication>
#include <QHash>
#include <QWidget>

#include <gtest/gtest.h>

#include <stdexcept>

/// A desktop that says what the test wants it to say.
class FakeDesktopSettings final : public DesktopSettings {
public:
    [[nodiscard]] QVariant value(const QString &group, const QString &key) const override
    {
        return m_values.value(group + u'/' + key);
    }
    void set(const QString &path, const QVariant &value)
    {
        m_values[path] = value;
        Q_EMIT changed();
    }

private:
    QHash<QString, QVariant> m_values;
};

/// A dressed application without animations, in the light look, and a window to put things into.
class ThemedTest : public testing::Test {
protected:
    ThemedTest() : m_appearance(m_settings, lightPalette())
    {
        using namespace Qt::StringLiterals;
        animate(false);
        Theme::follow(m_appearance);
        m_window.resize(900, 600);
        m_window.setFocusPolicy(Qt::StrongFocus);
    }
    ~ThemedTest() override { Theme::setLook({}); }

    void animate(bool animates)
    {
        m_settings.set(QStringLiteral("org.gnome.desktop.interface/enable-animations"), animates);
    }
    void showWindow()
    {
        m_window.show();
        QApplication::setActiveWindow(&m_window);
    }
    template <typename Widget>
    [[nodiscard]] static Widget &childOf(const QWidget *parent, const QString &name)
    {
        auto *found = parent != nullptr ? parent->findChild<Widget *>(name) : nullptr;
        if (found == nullptr)
            throw std::runtime_error("no such widget: " + name.toStdString());
        return *found;
    }
    static QPalette lightPalette() { return QPalette(Qt::black, QColor(0xEF, 0xEF, 0xEF)); }

    FakeDesktopSettings m_settings;
    Appearance m_appearance;
    QWidget m_window;
};
