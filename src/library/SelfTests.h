#pragma once

#include <QString>

#include <functional>

class CommandLine;
class DatabaseQueue;
class LibraryStore;

/// What the switches of the command line ask for once the store is open: self-tests that print their results in plain
/// lines, and screens to look at.
class SelfTests {
public:
    using Print = std::function<void(const QString &line)>;

    /// `queue` is the store's own. Both must outlive this.
    SelfTests(LibraryStore &store, DatabaseQueue &queue, Print print);

    /// Runs the first self-test that is asked for, in the order of the switches' precedence.
    void run(const CommandLine &commandLine);
    /// Leaves the store as the switches want to see it in the window; does nothing without a project.
    static void prepareScreens(LibraryStore &store, const CommandLine &commandLine);

private:
    void runExport(const QString &folder);
    void runImport(const QString &path);
    void runQueries();
    void runWordCount();
    void runRoundTrip(const QString &folder);
    void compareWithImported(DatabaseQueue &imported);
    void runExternalImport(const QString &archive);

    LibraryStore &m_store;
    DatabaseQueue &m_queue;
    Print m_print;
};
