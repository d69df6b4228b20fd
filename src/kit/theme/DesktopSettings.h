#pragma once

#include <QObject>
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
