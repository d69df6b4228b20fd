#pragma once

#include "kit/theme/Theme.h"

#include <QObject>
#include <QPalette>
#include <QVariant>

/// What the desktop tells every program about its user's taste.
class DesktopSettings : public QObject {
    Q_OBJECT

public:
    /// Invalid where the desktop says nothing.
    [[nodiscard]] virtual QVariant value(const QString &group, const QString &key) const = 0;

Q_SIGNALS:
    void changed();
};

/// How the desktop wants its windows to look and move. Asks the desktop's settings first, and judges by the palette
/// that the platform came with where they are silent.
class Appearance final : public QObject {
    Q_OBJECT

public:
    /// `platformPalette` is the application's palette before any other was set. `settings` must outlive this.
    Appearance(const DesktopSettings &settings, QPalette platformPalette);

    [[nodiscard]] Look look() const { return m_look; }
    [[nodiscard]] bool reducesMotion() const { return m_reducesMotion; }

Q_SIGNALS:
    void changed();

private:
    void read();
    [[nodiscard]] bool wantsDark() const;
    [[nodiscard]] bool wantsHighContrast() const;
    [[nodiscard]] bool wantsReducedMotion() const;

    const DesktopSettings &m_settings;
    QPalette m_platformPalette;
    Look m_look;
    bool m_reducesMotion = false;
};

/// The contrast of two opaque colours, from 1 to 21, as the accessibility guidelines reckon it.
[[nodiscard]] double contrast(const QColor &one, const QColor &other);
