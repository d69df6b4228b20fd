#pragma once

#include "support/FailingDisk.h"
#include "support/TestLibrary.h"

#include <QTemporaryDir>

#include <functional>
#include <memory>

/// Folders of a test about failing disks: one for the library, one for what is imported, one for exports, and one for
/// the system's temporary files.
class Workplace {
public:
    Workplace();
    ~Workplace();
    Workplace(const Workplace &) = delete;
    Workplace &operator=(const Workplace &) = delete;

    [[nodiscard]] QString library() const { return m_root.filePath(QStringLiteral("library")); }
    [[nodiscard]] QString libraryFile() const { return library() + QStringLiteral("/vorn.sqlite"); }
    [[nodiscard]] QString material(const QString &name) const;
    [[nodiscard]] QString exports() const { return m_root.filePath(QStringLiteral("exports")); }
    [[nodiscard]] QString temporary() const { return m_root.filePath(QStringLiteral("temporary")); }
    /// What is in the temporary folder.
    [[nodiscard]] QStringList leftovers() const;

    /// Puts the folder on a disk of its own, if that is possible.
    [[nodiscard]] bool putOnSmallDisk(const QString &folder, int kibibytes);
    [[nodiscard]] SmallDisk &smallDisk() { return *m_smallDisk; }

    /// Makes the library file anew: two documents, three codes in a small tree, some passages.
    void restoreLibrary();

private:
    const QByteArray m_temporaryBefore = qgetenv("TMPDIR");
    QTemporaryDir m_root;
    std::unique_ptr<SmallDisk> m_smallDisk;
};

/// Runs the statements on the database at `path` as a program that is killed behind the last of them.
void runAndBeKilled(const QString &path, const QByteArrayList &statements);

/// Something that befalls a folder, over as soon as the result is destroyed.
struct Disaster {
    const char *name;
    bool needsSmallDisk;
    std::function<std::shared_ptr<void>(Workplace &place, const QString &folder)> strike;
};
/// Each would catch another road on which a write fails.
[[nodiscard]] const std::vector<Disaster> &disasters();
void PrintTo(const Disaster &disaster, std::ostream *stream);
