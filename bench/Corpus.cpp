#include "Corpus.h"

#include "records/AppDatabase.h"
#include "records/Code.h"
#include "records/Coding.h"
#include "records/Document.h"
#include "records/Project.h"
#include "records/TextStats.h"
#include "records/database/Request.h"

#include <QTemporaryDir>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

enum class Language { english, french, chinese };

/// Words whose frequencies fall as they do in real texts.
class Vocabulary {
public:
    Vocabulary(const QString &letters, int size, std::mt19937 &random)
    {
        for (int index = 0; index < size; ++index) {
            const int length = 2 + int(random() % 4) + int(random() % 6);
            QString word;
            for (int position = 0; position < length; ++position)
                word += letters.at(qsizetype(random() % size_t(letters.size())));
            m_words.append(word);
        }
    }
    [[nodiscard]] const QString &word(std::mt19937 &random) const
    {
        const double uniform = double(random() % 1'000'000) / 1'000'000.0;
        return m_words.at(qsizetype(std::pow(double(m_words.size()), uniform)) - 1);
    }

private:
    QStringList m_words;
};

QString alphabeticText(const Vocabulary &words, int units, std::mt19937 &random)
{
    QString text;
    text.reserve(units + 40);
    bool startsSentence = true;
    while (text.size() < units) {
        QString word = words.word(random);
        if (startsSentence)
            word[0] = word.at(0).toUpper();
        text += word;
        startsSentence = random() % 12 == 0;
        text += startsSentence ? (random() % 5 == 0 ? u".\n\n"_s : u". "_s) : (random() % 15 == 0 ? u", "_s : u" "_s);
    }
    return text;
}

QString chineseText(int units, std::mt19937 &random)
{
    QString text;
    text.reserve(units + 4);
    while (text.size() < units) {
        const double uniform = double(random() % 1'000'000) / 1'000'000.0;
        text += QChar(char16_t(0x4E00 + int(std::pow(3000.0, uniform))));
        if (random() % 14 == 0)
            text += random() % 4 == 0 ? u"。\n"_s : u"，"_s;
    }
    return text;
}

Language languageOf(int index)
{
    const int place = index % 20;
    return place == 7 ? Language::french : place == 3 || place == 13 ? Language::chinese : Language::english;
}

} // namespace

Corpus::Corpus(int count, int bytes)
{
    std::mt19937 random(1);
    const Vocabulary english(u"eeeetttaaaooiinnsshhrrddlcumwfgypbvk"_s, 30'000, random);
    const Vocabulary french(u"eeeesssaaiinnttrruulloodmpcvéééèàqfbghêç"_s, 30'000, random);
    for (int index = 0; index < count; ++index) {
        switch (languageOf(index)) {
        case Language::english:
            m_texts.append(alphabeticText(english, bytes, random));
            break;
        case Language::french:
            m_texts.append(alphabeticText(french, bytes * 9 / 10, random));
            break;
        case Language::chinese:
            m_texts.append(chineseText(bytes / 3, random));
            break;
        }
        m_megabytes += double(m_texts.last().toUtf8().size()) / 1e6;
    }
}

const Corpus &largeCorpus()
{
    static const Corpus corpus(1'000, 100'000);
    return corpus;
}

QUuid writeLibrary(const QString &path, const Corpus &corpus, int codeCount, int codingCount)
{
    const QUuid projectID = QUuid::createUuid();
    std::mt19937 random(2);
    const QDateTime start = QDateTime::fromMSecsSinceEpoch(1'772'355'907'000, Qt::UTC);
    const auto queue = AppDatabase::openQueue(path);
    queue->write([&](Database &database) {
        Project project;
        project.id = projectID;
        project.name = u"Large"_s;
        project.createdAt = project.modifiedAt = start;
        project.insert(database);
        QList<Document> documents;
        for (const QString &text : corpus.texts()) {
            Document document;
            document.id = QUuid::createUuid();
            document.projectID = projectID;
            document.title = u"Interview %1"_s.arg(documents.size());
            document.text = text;
            document.addedAt = start.addSecs(documents.size());
            document.sourceKind = u"txt"_s;
            document.wordCount = TextStats::wordCount(text);
            document.charCount = TextStats::characterCount(text);
            document.insert(database);
            documents.append(document);
        }
        QList<QUuid> codeIDs;
        for (int index = 0; index < codeCount; ++index) {
            Code code;
            code.id = QUuid::createUuid();
            code.projectID = projectID;
            code.name = u"Code %1"_s.arg(index);
            code.colorHex = u"#5E5CE6"_s;
            code.createdAt = start.addSecs(index);
            code.insert(database);
            codeIDs.append(code.id);
        }
        for (int index = 0; index < codingCount; ++index) {
            const Document &document = documents.at(qsizetype(random() % size_t(documents.size())));
            Coding coding;
            coding.id = QUuid::createUuid();
            coding.documentID = document.id;
            coding.codeID = codeIDs.at(qsizetype(random() % size_t(codeIDs.size())));
            coding.start = qint64(random() % size_t(document.text.size() - 300));
            coding.length = 20 + qint64(random() % 200);
            coding.createdAt = start.addMSecs(index);
            coding.insert(database);
        }
    });
    return projectID;
}

CorpusLibrary::CorpusLibrary(const Corpus &corpus, int codeCount, int codingCount)
    : m_folder(std::make_unique<QTemporaryDir>()),
      m_projectID(writeLibrary(path(), corpus, codeCount, codingCount))
{
}

CorpusLibrary::~CorpusLibrary() = default;

QString CorpusLibrary::path() const
{
    return m_folder->filePath(u"vorn.sqlite"_s);
}
