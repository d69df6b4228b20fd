#pragma once

#include "library/CommandLine.h"

#include <QList>
#include <QString>

class LibraryStore;
struct Code;
struct Coding;
class DatabaseQueue;

/// What the switches of the command line ask for after start-up: screens to look at, and self-tests that print their
/// results in plain lines and then end the program.
class SelfTests {
public:
    SelfTests(LibraryStore &store, CommandLine commandLine);

    /// Obeys the switches in their order of precedence.
    void dispatch();

private:
    [[nodiscard]] bool dispatchQuitting();
    void dispatchStaying();
    void selectFirstCode();
    void runQueryDemo();
    void runCount();
    void selectTopTerm();

    void runExportDemo(const QString &path);
    void runImportTest(const QString &path);
    void runQueryTest();
    void runFrequencyTest();
    void runQdpxSelfTest(const QString &path);
    void compareRoundTrip(const QList<Coding> &exported, DatabaseQueue &imported);
    void compareFirstCode(const Code &first, const Code &imported);
    void runExternalImport(const QString &archive);

    void print(const QString &line) const;

    LibraryStore &m_store;
    CommandLine m_commandLine;
};
