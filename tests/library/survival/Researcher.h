#pragma once

#include "library/LibraryStore.h"
#include "support/NastyText.h"
#include "support/TestLibrary.h"

#include <QString>

/// Works on a library as a person would, through the store, in an order given by a seed. What step `n` does depends
/// only on the seed, on `n` and on what the library holds: two libraries with equal digests go the same way.
class Researcher {
public:
    /// Files to import are made in `folder`. `library` must outlive this and be open in its first project.
    Researcher(TestLibrary &library, QString folder, unsigned seed);

    /// Does step `number`, which is one transaction but for an import of several files, which has one for each.
    void work(int number);

    /// Where reports go, each over the one before.
    [[nodiscard]] static QString reportIn(const QString &folder) { return folder + QStringLiteral("/report.html"); }

private:
    void importFiles();
    void importArchive();
    void makeArchive(const QString &path);
    void paste();
    void makeCode();
    void assign();
    void unassign();
    void nest();
    void toTop();
    void merge();
    void removeCode();
    void removeDocument();
    void writeMemo();
    void rename();
    void writeReport();

    [[nodiscard]] QString fresh(const QString &kind) const;
    /// One of the list by chance, by the order of names; absent for an empty list.
    [[nodiscard]] std::optional<Document> someDocument();
    [[nodiscard]] std::optional<Code> someCode();

    TestLibrary &m_library;
    LibraryStore &m_store;
    QString m_folder;
    unsigned m_seed;
    int m_number = 0;
    NastyText m_random{0};
};
