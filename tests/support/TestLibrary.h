#pragma once

#include "library/LibraryStore.h"
#include "records/database/DatabaseQueue.h"
#include "support/Fakes.h"

#include <memory>

/// The real store on a real database, in memory unless a queue is given; only the clock, the file dialogs and the
/// system are fakes. Each reading of the clock is a second after the one before.
class TestLibrary {
public:
    /// Started as the program is with these arguments of the command line.
    explicit TestLibrary(const QStringList &arguments = {}, std::unique_ptr<DatabaseQueue> existing = nullptr);

    FakeFileDialogs fileDialogs;
    FakeFileViewer fileViewer;
    QStringList printed; ///< by a self-test
    QStringList steps; ///< of imports, as "number/count name"
    qint64 stopBefore = 0; ///< number of the step that an import is stopped at; 0 for none
    std::unique_ptr<DatabaseQueue> queue;
    LibraryStore store;

    /// The codes of these names, made in this order at the top level.
    QList<Code> makeCodes(const QStringList &names);
    /// A pasted document, as the store lists it.
    Document paste(const QString &title, const QString &text);
    /// The code or document of that name as the store lists it now. Throws std::out_of_range.
    [[nodiscard]] Code code(const QString &name) const;
    [[nodiscard]] Document document(const QString &title) const;
    /// All of the file, in the order of their making.
    [[nodiscard]] QList<Coding> storedCodings() const;
    [[nodiscard]] QList<Code> storedCodes() const;

private:
    QDateTime m_now;
};

/// Counts how often a value announces a change.
class ChangeCounter {
public:
    explicit ChangeCounter(const Notifier &notifier)
    {
        QObject::connect(&notifier, &Notifier::changed, &m_context, [this] { ++m_count; });
    }

    [[nodiscard]] int count() const { return m_count; }

private:
    QObject m_context;
    int m_count = 0;
};
