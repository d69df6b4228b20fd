#pragma once

#include "support/TestLibrary.h"

#include <QStringList>

/// Goes through all that a user can do with a library, whatever is in it, and notes what no library may lead to:
/// passages outside their texts, failures without a word, a tree that lost a code, an export that can't be read.
class Tour {
public:
    /// Files are written into `folder`. `library` must outlive this.
    Tour(TestLibrary &library, QString folder) : m_library(library), m_store(library.store), m_folder(std::move(folder))
    {
    }

    /// What changes nothing in the library.
    void look();
    /// What does. Texts of documents must come out of it as they were.
    void work();
    /// Sentences; empty when all went as it should.
    [[nodiscard]] const QStringList &faults() const { return m_faults; }

private:
    void lookAtTree();
    void lookAtPassages();
    void query();
    void countWords();
    void exportReports();
    void exportArchive();
    void workOnDocuments();
    void workOnCodes();

    void expect(bool isSo, const QString &fault);
    /// A failure is told in words, and only once.
    void expectSpeech();
    void expectPassage(const QUuid &documentID, const TextRange &range, const QString &fault);

    TestLibrary &m_library;
    LibraryStore &m_store;
    QString m_folder;
    QStringList m_faults;
};
