#pragma once

#include "kit/theme/Appearance.h"

#include <QDBusVariant> // whole, so that the slot's parameter is a known type to D-Bus
#include <QMap>
#include <QVariantMap>

class QDBusMessage;

/// The settings as the desktop portal gives them over D-Bus. Without a portal there are none.
class PortalSettings final : public DesktopSettings {
    Q_OBJECT

public:
    PortalSettings();

    [[nodiscard]] QVariant value(const QString &group, const QString &key) const override;

private:
    using Groups = QMap<QString, QVariantMap>;

    void readAll();
    void readLater(const QDBusMessage &request);
    void take(const QDBusMessage &reply);
    Q_SLOT void noteChange(const QString &group, const QString &key, const QDBusVariant &value);

    Groups m_groups;
};
