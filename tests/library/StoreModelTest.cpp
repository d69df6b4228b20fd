#include "analysis/CompoundQuery.h"
#include "library/CodeTree.h"
#include "library/ModelledLibrary.h"

using namespace Qt::StringLiterals;

namespace {

void appendBelow(const std::optional<QUuid> &parent, qint64 depth, const QList<Code> &codes, QList<FlatCode> &lines)
{
    for (const Code &code : codes) {
        if (code.parentID != parent)
            continue;
        lines.append({code, depth});
        if (depth < 4)
            appendBelow(code.id, depth + 1, codes, lines);
    }
}

/// As `CodeTree::ordered`. What isn't met on the way down comes last.
QList<FlatCode> plainlyOrdered(const QList<Code> &codes)
{
    QList<Code> byAge = codes;
    std::ranges::stable_sort(byAge, {}, &Code::createdAt);
    QList<FlatCode> lines;
    appendBelow({}, 0, byAge, lines);
    for (const Code &code : codes) {
        if (std::ranges::find(lines, code.id, &FlatCode::id) == lines.end())
            lines.append({code, 0});
    }
    return lines;
}

/// Both must hold the same after each operation.
class ComparedLibrary : public ModelledLibrary {
public:
    using ModelledLibrary::ModelledLibrary;

    void compare()
    {
        EXPECT_EQ(m_store.lastError().get().has_value(), m_expectsError);
        m_store.refresh();
        m_library.queue->read([this](Database &database) {
            EXPECT_EQ(Project::all().order(Column("createdAt")).fetchAll(database), m_projects);
            EXPECT_EQ(Document::all().fetchAll(database), m_documents);
            EXPECT_EQ(Code::all().fetchAll(database), m_codes);
            EXPECT_EQ(Coding::all().fetchAll(database), m_codings);
        });
        compareLists();
        compareMemos();
        compareSearch();
    }

    void compareQuery()
    {
        const auto withoutIDs = [](QList<QueryResult> results) {
            for (QueryResult &result : results)
                result.id = {};
            return results;
        };
        if (codes().isEmpty())
            return;
        QuerySpec spec{.codeIDs = {any(codes()).id}, .mode = any(QuerySpec::modes())};
        if (const QUuid other = any(codes()).id; !spec.codeIDs.contains(other))
            spec.codeIDs.append(other);
        m_store.runQuery({});
        EXPECT_EQ(m_store.sidebarSelection().get(), m_sidebar);
        m_store.runQuery(spec);
        m_sidebar = QuerySelection{};
        std::vector<Coding> codings; // by code, as an index gives them
        for (const QUuid &codeID : std::as_const(spec.codeIDs))
            std::ranges::copy_if(
                m_codings, std::back_inserter(codings), [&](const Coding &coding) { return coding.codeID == codeID; });
        const QList<QueryResult> results = m_store.queryResults().get();
        EXPECT_EQ(withoutIDs(results), withoutIDs(CompoundQuery::evaluate(spec, codings, documents())));
        EXPECT_EQ(m_store.querySummary(), CompoundQuery::summary(spec, codes()));
        for (const QueryResult &result : results.mid(0, 1)) {
            m_store.reveal(result);
            noteReveal(result.documentID, result.id, result.range);
        }
    }

    void compareWordCount()
    {
        const QUuid code = codes().isEmpty() || m_random.onceIn(9) ? QUuid() : any(codes()).id;
        const QUuid one = documents().isEmpty() || m_random.onceIn(9) ? QUuid() : any(documents()).id;
        const std::pair<WordFrequency::Scope, QString> scopes[]{{WordFrequency::AllDocuments{}, u"All documents"_s},
            {WordFrequency::InDocument{one}, one.isNull() ? u"Document"_s : find(m_documents, one)->title},
            {WordFrequency::InCode{code}, code.isNull() ? u"Code"_s : find(m_codes, code)->name}};
        const auto &[scope, label] = any(scopes);
        QList<PlainAnalysis::Source> sources;
        for (const Document &document : documents()) {
            PlainAnalysis::Source source{document.text};
            if (std::holds_alternative<WordFrequency::InCode>(scope)) {
                source.passages.emplace();
                for (const Coding &coding : std::as_const(m_codings)) {
                    if (coding.codeID == code && coding.documentID == document.id)
                        source.passages->push_back(coding.range());
                }
            }
            if (!std::holds_alternative<WordFrequency::InDocument>(scope) || document.id == one)
                sources.append(source);
        }
        const int minLength = m_random.number(1, 4);
        const bool ignoreStopwords = m_random.onceIn(2);
        m_store.runWordFrequency(scope, minLength, ignoreStopwords, 7);
        m_sidebar = WordFreqSelection{};
        EXPECT_EQ(m_store.wordFreqItems().get(), PlainAnalysis::topTerms(sources, minLength, ignoreStopwords, 7));
        EXPECT_EQ(m_store.wordFreqScopeLabel().get(), label);
        EXPECT_FALSE(m_store.wordFreqSelectedTerm().get() || !m_store.wordFreqOccurrences()->isEmpty());
        for (const WordFrequency::Item &item : m_store.wordFreqItems()->mid(0, 1)) {
            m_store.selectWordFreqTerm(item.term);
            EXPECT_EQ(m_store.wordFreqSelectedTerm().get(), item.term);
            EXPECT_EQ(m_store.wordFreqOccurrences()->size(), item.count);
            const WordFrequency::Occurrence first = m_store.wordFreqOccurrences()->first();
            m_store.reveal(first);
            noteReveal(first.documentID, first.id, first.range);
        }
    }

private:
    void compareLists()
    {
        const QList<Document> shown = documents();
        const auto isShown = [&](const QUuid &id) {
            return std::ranges::find(shown, id, &Document::id) != shown.end();
        };
        if (!m_selected || !isShown(*m_selected))
            m_selected = shown.isEmpty() ? std::nullopt : std::optional(shown.first().id);
        QHash<QUuid, qint64> documentCounts;
        for (const Document &document : std::as_const(m_documents))
            ++documentCounts[document.projectID];
        QHash<QUuid, qint64> codeCounts;
        for (const Coding &coding : std::as_const(m_codings)) {
            if (isShown(coding.documentID))
                ++codeCounts[coding.codeID];
        }
        EXPECT_EQ(m_store.project().get(), m_project);
        EXPECT_EQ(m_store.projects().get(), m_projects);
        EXPECT_EQ(m_store.projectDocCounts().get(), documentCounts);
        EXPECT_EQ(m_store.documents().get(), shown);
        EXPECT_EQ(m_store.codes().get(), codes());
        EXPECT_EQ(m_store.codeCounts().get(), codeCounts);
        EXPECT_EQ(m_store.codingRevision().get(), m_revision);
        EXPECT_EQ(m_store.selectedDocumentID().get(), m_selected);
        EXPECT_EQ(m_store.sidebarSelection().get(), m_sidebar);
        EXPECT_EQ(m_store.revealRequest().get(), m_reveal);
        EXPECT_EQ(m_store.orderedCodes(), plainlyOrdered(codes()));
        EXPECT_EQ(m_store.shouldShowCodingHint(), codeCounts.isEmpty() && !shown.isEmpty());
        for (const Document &document : shown.mid(0, 1)) {
            QList<Coding> expected = m_codings;
            expected.removeIf([&](const Coding &coding) { return coding.documentID != document.id; });
            EXPECT_EQ(m_store.codings(document), expected);
        }
        if (codes().isEmpty())
            return;
        const Code code = any(codes());
        QList<ExcerptHit> expected;
        for (const Coding &coding : std::as_const(m_codings)) {
            const Document document = *find(m_documents, coding.documentID);
            if (coding.codeID == code.id && isShown(document.id))
                expected.append(
                    {coding.id, document.id, document.title, Snippet::withoutLineFeeds(document.text, coding.range()),
                        coding.start, coding.length, coding.createdAt});
        }
        EXPECT_EQ(m_store.excerpts(code.id), expected);
        EXPECT_EQ(m_store.exportGroups(code.id).first().hits, expected);
        EXPECT_EQ(m_store.exportGroups({}).size(), codes().size());
    }

    void compareMemos()
    {
        const auto compare = [this](const auto &record, const std::optional<QString> &shown) {
            EXPECT_EQ(m_store.isMemoWritten(record.id), !m_unwritten.contains(record.id));
            EXPECT_EQ(shown, m_unwritten.value(record.id, record.memo).value_or(QString()));
        };
        for (const Document &document : documents())
            compare(document, m_store.documentMemo(document.id));
        for (const Code &code : codes())
            compare(code, m_store.codeMemo(code.id));
        EXPECT_EQ(m_store.codeMemo(QUuid()), std::nullopt);
    }

    /// The search text grows letter by letter from what a document holds.
    void compareSearch()
    {
        if (m_random.onceIn(4))
            m_search.clear();
        else if (!documents().isEmpty())
            m_search = any(documents()).text.mid(m_random.number(0, 9), m_search.size() + 1).toUpper();
        m_store.searchText().set(m_search);
        const QString needle = TextTrimming::trimmedBlanks(m_search).toString();
        QList<Document> expected = documents();
        expected.removeIf([&](const Document &document) {
            return PlainAnalysis::firstInLowered(document.title, needle) < 0
                && PlainAnalysis::firstInLowered(document.text, needle) < 0;
        });
        EXPECT_EQ(m_store.visibleDocuments(), expected);
    }

    QString m_search;
};

} // namespace

TEST(Store, HoldsWhatPlainListsHoldAfterAnyOperations)
{
    for (const unsigned seed : {1U, 2U, 3U}) {
        ComparedLibrary library(seed);
        for (int round = 0; round < 250; ++round) {
            library.step();
            library.compare();
            if (round % 4 == 0)
                library.compareQuery();
            if (round % 4 == 1)
                library.compareWordCount();
            ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed << ", round " << round;
        }
    }
}

TEST(CodeTree, ListsEveryCodeOnceOnAnyData)
{
    NastyText random(5);
    for (int round = 0; round < 300; ++round) {
        QList<Code> codes(random.number(1, 12));
        for (Code &code : codes) {
            code.id = QUuid::createUuid();
            code.createdAt = QDateTime::fromMSecsSinceEpoch(random.number(0, 2), QTimeZone::utc());
        }
        for (Code &code : codes) { // parents at random: chains, cycles, itself, and some that don't exist
            const int pick = random.number(0, int(codes.size()) + 1);
            if (pick <= codes.size())
                code.parentID = pick < codes.size() ? codes.at(pick).id : QUuid::createUuid();
        }
        ASSERT_EQ(CodeTree::ordered(codes), plainlyOrdered(codes)) << "round " << round;
    }
}
