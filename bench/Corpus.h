#pragma once

#include "records/database/DatabaseQueue.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <memory>
#include <random>

class QTemporaryDir;

/// Texts as a researcher may have them, made from a seed: always the same. Mostly English, some French, some Chinese.
class Corpus {
public:
    /// About `bytes` of UTF-8 in each of `count` documents.
    Corpus(int count, int bytes);

    [[nodiscard]] const QList<QString> &texts() const { return m_texts; }
    [[nodiscard]] double megabytes() const { return m_megabytes; }

private:
    QList<QString> m_texts;
    double m_megabytes = 0;
};

/// The corpus of 1,000 × 100 kB that most rows work on; made on first use.
[[nodiscard]] const Corpus &largeCorpus();

/// Writes a library file with one project that has the documents of a corpus and codings in them; returns its id.
QUuid writeLibrary(const QString &path, const Corpus &corpus, int codeCount, int codingCount);

/// Such a file for as long as the object lives.
class CorpusLibrary {
public:
    CorpusLibrary(const Corpus &corpus, int codeCount, int codingCount);
    ~CorpusLibrary();

    [[nodiscard]] QString path() const;
    [[nodiscard]] QUuid projectID() const { return m_projectID; }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QUuid m_projectID;
};
