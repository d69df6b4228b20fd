#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <functional>

/// The built program itself, on a library in a folder of its own and, unless a platform of Qt is named, without a
/// display.
class BuiltProgram {
public:
    /// `prepare` is called in the new process.
    void start(QProcess &process, const QStringList &arguments, const QString &platform = {},
        const std::function<void()> &prepare = {}) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(QString::fromUtf8(variable));
        if (!platform.isEmpty())
            environment.insert(QStringLiteral("QT_QPA_PLATFORM"), platform);
        environment.insert(QStringLiteral("XDG_DATA_HOME"), path(QStringLiteral("data")));
        environment.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
        process.setProcessEnvironment(environment);
        process.setChildProcessModifier(prepare);
        process.start(QStringLiteral(VORN_PROGRAM), arguments);
    }
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString libraryFile() const { return path(QStringLiteral("data/Vorn/vorn.sqlite")); }

private:
    QTemporaryDir m_folder;
};
