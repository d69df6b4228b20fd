#pragma once

#include "support/TestLibrary.h"

#include <QTemporaryDir>

#include <span>

/// Folders for a test about harm: one for the library, one for what is imported, one for exports, and one for the
/// system's temporary files.
class Workplace {
public:
    Workplace();
    ~Workplace();
    Workplace(const Workplace &) = delete;
    Workplace &operator=(const Workplace &) = delete;

    [[nodiscard]] QString library() const { return m_root.filePath(QStringLiteral("library")); }
    [[nodiscard]] QString libraryFile() const { return library() + QStringLiteral("/vorn.sqlite"); }
    [[nodiscard]] QString material(const QString &name) const
    {
        return m_root.filePath(QStringLiteral("material/") + name);
    }
    [[nodiscard]] QString exports() const { return m_root.filePath(QStringLiteral("exports")); }
    [[nodiscard]] QString temporary() const { return m_root.filePath(QStringLiteral("temporary")); }
    /// What is in the temporary folder.
    [[nodiscard]] QStringList leftovers() const;

    /// Makes the library file anew: two documents, three codes in a small tree, some passages.
    void restoreLibrary();
    /// The same, opened.
    [[nodiscard]] std::unique_ptr<DatabaseQueue> restored();

private:
    const QByteArray m_temporaryBefore = qgetenv("TMPDIR");
    QTemporaryDir m_root;
};

/// What a library means, without what differs from one run to the next: a line for each project, document, code and
/// coding, by names instead of identifiers and dates. Two libraries with equal digests hold the same work.
[[nodiscard]] QString digestOf(DatabaseQueue &queue);
/// What is wrong with the file as a whole; empty when nothing is: SQLite's own check, codings without their document or
/// code or outside the text, codes below one that isn't there or below themselves, things in no project.
[[nodiscard]] QString faultsOf(DatabaseQueue &queue);

/// One thing that a user does, which writes into the library or changes nothing.
struct Operation {
    struct Subject {
        const TestLibrary &library;
        LibraryStore &store;
        const Workplace &place;
    };

    const char *name;
    void (*body)(const Subject &subject);
    const char *complaint = nullptr; ///< the beginning of what a failure says; null where the lists show it

    void perform(TestLibrary &library, const Workplace &place) const { body({library, library.store, place}); }
};

/// Each can be done by itself on the library of a `Workplace`, and all of them one after the other.
[[nodiscard]] std::span<const Operation> operations();
